// Bare loops that read rows of fixed widths, cut them and write them without a rule: what the machine gives at most.
//
//   bare_rows bytes|characters|sheet WIDTH,WIDTH,... IN OUT
//
// Each width is followed by one separating byte. A field with a comma or a quote is put in quotes; "sheet" writes
// deflated cells of a sheet's XML, numbers as numbers and other texts in line.

#include <fcntl.h>
#include <isa-l/igzip_lib.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr size_t kBlock = size_t{1} << 20;
constexpr size_t kRoom = size_t{1} << 16;

class Writer {
 public:
  Writer(const char* pPath, bool bDeflates) : nHandle_(open(pPath, O_CREAT | O_TRUNC | O_WRONLY, 0666)) {
    if (!bDeflates) return;
    isal_deflate_init(&zip_);
    zip_.level = 1;
    zip_.level_buf = level_.data();
    zip_.level_buf_size = static_cast<uint32_t>(level_.size());
    bDeflates_ = true;
  }
  char* Room() {
    if (nUsed_ > kBlock - kRoom) Flush(false);
    return bytes_.get() + nUsed_;
  }
  void Used(const char* pEnd) { nUsed_ = static_cast<size_t>(pEnd - bytes_.get()); }
  void Flush(bool bLast) {
    if (!bDeflates_) {
      Write(bytes_.get(), nUsed_);
    } else {
      zip_.next_in = reinterpret_cast<uint8_t*>(bytes_.get());
      zip_.avail_in = static_cast<uint32_t>(nUsed_);
      zip_.end_of_stream = bLast ? 1 : 0;
      do {
        zip_.next_out = packed_.data();
        zip_.avail_out = static_cast<uint32_t>(packed_.size());
        isal_deflate(&zip_);
        Write(reinterpret_cast<char*>(packed_.data()), packed_.size() - zip_.avail_out);
      } while (zip_.avail_out == 0);
    }
    nUsed_ = 0;
  }

 private:
  void Write(const char* p, size_t n) const {
    if (write(nHandle_, p, n) != static_cast<ssize_t>(n)) std::exit(1);
  }
  int nHandle_;
  bool bDeflates_ = false;
  std::unique_ptr<char[]> bytes_ = std::make_unique<char[]>(kBlock);
  size_t nUsed_ = 0;
  isal_zstream zip_{};
  std::vector<uint8_t> level_ = std::vector<uint8_t>(ISAL_DEF_LVL1_DEFAULT);
  std::vector<uint8_t> packed_ = std::vector<uint8_t>(kBlock);
};

char* Put(char* p, std::string_view s) {
  std::memcpy(p, s.data(), s.size());
  return p + s.size();
}

char* PutField(char* p, std::string_view s) {
  bool bQuotes = false;
  for (const char c : s) bQuotes |= c == ',' || c == '"';
  if (!bQuotes) return Put(p, s);
  *p++ = '"';
  for (const char c : s) {
    if (c == '"') *p++ = '"';
    *p++ = c;
  }
  *p++ = '"';
  return p;
}

char* PutCell(char* p, std::string_view s) {
  while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
  while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
  bool bNumber = !s.empty();
  for (const char c : s) bNumber = bNumber && ((c >= '0' && c <= '9') || c == '.');
  if (bNumber) return Put(Put(Put(p, "<c><v>"), s), "</v></c>");
  return Put(Put(Put(p, "<c t=\"inlineStr\"><is><t>"), s), "</t></is></c>");
}

size_t BehindCharacters(std::string_view s, size_t nAt, size_t nCharacters) {
  for (; nCharacters > 0 && nAt < s.size(); --nCharacters) {
    ++nAt;
    while (nAt < s.size() && (static_cast<unsigned char>(s[nAt]) & 0xC0) == 0x80) ++nAt;
  }
  return nAt;
}

void PutRow(Writer& out, std::string_view s, const std::vector<size_t>& widths, bool bCharacters, bool bSheet) {
  char* p = out.Room();
  if (bSheet) p = Put(p, "<row>");
  size_t nAt = 0;
  for (size_t i = 0; i < widths.size(); ++i) {
    const size_t nEnd =
        bCharacters ? BehindCharacters(s, nAt, widths[i]) : (nAt + widths[i] < s.size() ? nAt + widths[i] : s.size());
    const std::string_view sField = s.substr(nAt < s.size() ? nAt : s.size(), nEnd - nAt);
    if (!bSheet && i > 0) *p++ = ',';
    p = bSheet ? PutCell(p, sField) : PutField(p, sField);
    nAt = nEnd + 1;
  }
  p = Put(p, bSheet ? "</row>" : "\r\n");
  out.Used(p);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) return 2;
  const std::string_view sKind = argv[1];
  std::vector<size_t> widths;
  for (const char* p = argv[2]; *p != '\0';) {
    char* pEnd = nullptr;
    widths.push_back(std::strtoul(p, &pEnd, 10));
    p = *pEnd == ',' ? pEnd + 1 : pEnd;
  }
  const int nIn = open(argv[3], O_RDONLY);
  Writer out(argv[4], sKind == "sheet");
  std::vector<char> block(kBlock);
  size_t nHeld = 0;
  ssize_t nGot = 0;
  while ((nGot = read(nIn, block.data() + nHeld, block.size() - nHeld)) > 0) {
    const std::string_view sAll(block.data(), nHeld + static_cast<size_t>(nGot));
    size_t nAt = 0;
    for (size_t nEnd = 0; (nEnd = sAll.find('\n', nAt)) != std::string_view::npos; nAt = nEnd + 1) {
      PutRow(out, sAll.substr(nAt, nEnd - nAt), widths, sKind == "characters", sKind == "sheet");
    }
    nHeld = sAll.size() - nAt;
    std::memmove(block.data(), block.data() + nAt, nHeld);
  }
  out.Flush(true);
  return 0;
}
