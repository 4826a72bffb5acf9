#include "clsResultList.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <nlohmann/json.hpp>
#include <thread>

#include "clsFingerprint.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modSystemIo.h"
#include "modText.h"

namespace quillon {

namespace {

using Json = nlohmann::ordered_json;

/// Raised when a key changes its meaning; keys that come in addition don't raise it.
constexpr int kVersion = 1;
constexpr std::string_view kDone = "done", kFailed = "failed", kHexSuffix = "_hex";

std::string HexOf(std::string_view sBytes) {
  std::string sOut;
  for (const char c : sBytes) sOut += fmt::format("{:02x}", static_cast<unsigned char>(c));
  return sOut;
}

std::string BytesOfHex(std::string_view sHex) {
  constexpr int kBase = 16;
  std::string sOut;
  for (size_t i = 0; i + 1 < sHex.size(); i += 2) {
    sOut += static_cast<char>(std::strtol(std::string(sHex.substr(i, 2)).c_str(), nullptr, kBase));
  }
  return sOut;
}

void PutPath(Json& line, const std::string& sKey, const std::string& sPath) {
  line[sKey] = sPath;
  if (!IsValidUtf8(sPath)) line[sKey + std::string(kHexSuffix)] = HexOf(sPath);
}

Json TextsOf(const std::vector<ResultText>& texts) {
  Json list = Json::array();
  for (const ResultText& text : texts) list.push_back(Json{{"code", text.lCode}, {"text", text.sText}});
  return list;
}

std::string TextAt(const Json& line, const std::string& sKey) {
  const auto found = line.find(sKey);
  return found != line.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::string PathAt(const Json& line, const std::string& sKey) {
  const std::string sHex = TextAt(line, sKey + std::string(kHexSuffix));
  return sHex.empty() ? TextAt(line, sKey) : BytesOfHex(sHex);
}

int64_t NumberAt(const Json& line, const std::string& sKey) {
  const auto found = line.find(sKey);
  return found != line.end() && found->is_number_integer() ? found->get<int64_t>() : -1;
}

uint64_t Making(std::string_view sInput, const ListedState& state, std::string_view sMadeBy, int64_t lOutputBytes) {
  clsFingerprint making;
  return making.Add(sInput).Add(state.lBytes).Add(state.sModified).Add(sMadeBy).Add(lOutputBytes).Value();
}

uint64_t KeyOf(std::string_view sOutput) {
  return clsFingerprint().Add(sOutput).Value();
}

}  // namespace

std::optional<ListedState> StateOfFile(std::string_view sPath) {
  struct stat about {};
  if (stat(HostPath(sPath).c_str(), &about) != 0) return std::nullopt;
  return ListedState{about.st_size, fmt::format("{}.{:09}", about.st_mtim.tv_sec, about.st_mtim.tv_nsec)};
}

namespace {

/// The keys of kinds, in the order of TidyLineKind; blank lines are of no kind.
constexpr std::array<std::string_view, kTidyLineKinds - 1> kKinds{"row",   "further", "joined",   "heading",
                                                                  "total", "dropped", "left_out", "outside"};

void PutAccount(Json& json, const ResultLine& line) {
  Json lines{{"read", line.lLinesRead}, {"in_tables", line.lLinesInTables}};
  for (size_t i = 0; line.bLinesByKind && i < kKinds.size(); ++i) lines[std::string(kKinds[i])] = line.proof.lines[i];
  if (line.bLinesByKind) {
    lines["like_rows"] = line.proof.lLikeRows;
    lines["may_be_rows"] = line.proof.lFigureLines + line.proof.lMeantLikeRows;
  }
  json["lines"] = std::move(lines);
  const CharacterLoss& loss = line.proof.loss;
  json["characters"] = Json{{"in_front", loss.lInFront},
                            {"between", loss.lBetween},
                            {"behind", loss.lBehind},
                            {"not_in_code_page", line.lCharactersLost}};
  json["cut_values"] = loss.lCuts;
  json["cells_failed"] = line.lCellsFailed;
  json["totals"] = Json{{"agree", line.proof.lTotalsAgree},
                        {"last_digit", line.proof.lTotalsLastDigit},
                        {"disagree", line.proof.lTotalsDisagree}};
  json["pages_out_of_order"] = line.proof.pages.lPages;
}

}  // namespace

std::string ResultLineText(const ResultLine& line) {
  Json json = Json::object();
  json["version"] = kVersion;
  PutPath(json, "input", line.sInput);
  PutPath(json, "output", line.sOutput);
  json["status"] = line.bDone ? kDone : kFailed;
  json["rows"] = line.lRows;
  PutAccount(json, line);
  json["warnings"] = TextsOf(line.warnings);
  json["errors"] = TextsOf(line.errors);
  constexpr double kThousand = 1000;
  json["seconds"] = std::round(line.dSeconds * kThousand) / kThousand;
  if (line.state) {
    json["bytes"] = line.state->lBytes;
    // A text, as programs that take all numbers for floating-point ones would round it.
    json["modified"] = line.state->sModified;
  }
  if (line.lOutputBytes >= 0) json["output_bytes"] = line.lOutputBytes;
  json["made_by"] = line.sMadeBy;
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

clsResultList::~clsResultList() {
  if (nHandle_ >= 0) close(nHandle_);
}

bool clsResultList::Open(const std::string& sFile, Failure& failure) {
  sFile_ = sFile;
  constexpr unsigned kMode = 0666;
  bExisted_ = PathExists(sFile);
  nHandle_ = OpenHandle(HostPath(sFile), O_RDWR | O_APPEND | O_CREAT, kMode);
  struct stat about {};
  if (nHandle_ < 0 || fstat(nHandle_, &about) != 0) {
    failure = SystemFailure(sFile, errno);
    return false;
  }
  bAlone_ = flock(nHandle_, LOCK_EX | LOCK_NB) == 0;
  return true;
}

// Where files can't be locked nobody is ever alone, and nothing waits.
void clsResultList::Share() {
  if (flock(nHandle_, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK) flock(nHandle_, LOCK_SH);
  bAlone_ = false;
}

bool clsResultList::Read(Failure& failure) {
  constexpr size_t kBlock = size_t{1} << 20;
  constexpr size_t kLongestLine = size_t{16} << 20;
  std::string sBlock(kBlock, '\0'), sLine;
  int64_t nOffset = 0, nGot = 0;
  while ((nGot = ReadHandleAt(nHandle_, sBlock.data(), kBlock, nOffset)) > 0) {
    nOffset += nGot;
    std::string_view sRest(sBlock.data(), static_cast<size_t>(nGot));
    for (size_t nEnd = sRest.find('\n'); nEnd != std::string_view::npos; nEnd = sRest.find('\n')) {
      Learn(sLine.append(sRest.substr(0, nEnd)));
      sLine.clear();
      sRest.remove_prefix(nEnd + 1);
    }
    if (sLine.size() < kLongestLine) sLine.append(sRest);
  }
  if (nGot < 0) failure = SystemFailure(sFile_, errno);
  Learn(sLine);
  return nGot == 0;
}

void clsResultList::Learn(const std::string& sLine) {
  const Json line = Json::parse(sLine, nullptr, false);
  if (!line.is_object()) return;
  const std::string sOutput = PathAt(line, "output");
  if (sOutput.empty()) return;
  known_.erase(KeyOf(sOutput));
  if (TextAt(line, "status") != kDone) return;
  const ListedState state{NumberAt(line, "bytes"), TextAt(line, "modified")};
  known_[KeyOf(sOutput)] =
      Making(PathAt(line, "input"), state, TextAt(line, "made_by"), NumberAt(line, "output_bytes"));
}

bool clsResultList::TellsOf(std::string_view sOutput) const {
  return known_.contains(KeyOf(sOutput));
}

bool clsResultList::IsDone(const PlannedFile& file, std::string_view sMadeBy) const {
  const auto known = known_.find(KeyOf(file.sOutput));
  if (known == known_.end()) return false;
  const auto input = StateOfFile(file.sInput);
  const auto output = StateOfFile(file.sOutput);
  return input && output && known->second == Making(file.sInput, *input, sMadeBy, output->lBytes);
}

bool clsResultList::IsTorn() const {
  constexpr auto kWhileOthersWrite = std::chrono::milliseconds(50);
  for (off_t nBefore = 0;;) {
    struct stat about {};
    char cLast = '\n';
    if (fstat(nHandle_, &about) != 0 || !S_ISREG(about.st_mode) || about.st_size == 0) return false;
    ReadHandleAt(nHandle_, &cLast, 1, about.st_size - 1);
    if (cLast == '\n' || about.st_size == nBefore) return cLast != '\n';
    nBefore = about.st_size;
    std::this_thread::sleep_for(kWhileOthersWrite);
  }
}

// Looked at each time: another process of the list may have been killed within its line.
bool clsResultList::Write(std::string_view sLine, Failure& failure) {
  const std::string sText = (IsTorn() ? "\n" : "") + std::string(sLine) + "\n";
  if (WriteHandle(nHandle_, sText.data(), sText.size())) return true;
  failure = SystemFailure(sFile_, errno);
  return false;
}

}  // namespace quillon
