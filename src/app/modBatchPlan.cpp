#include "modBatchPlan.h"

#include <sys/stat.h>

#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "modExcelLink.h"
#include "modFileListing.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modRunMessages.h"
#include "modStrings.h"
#include "modText.h"

namespace quillon {

namespace {

using Identity = std::pair<dev_t, ino_t>;

std::optional<Identity> IdentityOf(std::string_view sPath) {
  struct stat about {};
  if (stat(HostPath(sPath).c_str(), &about) != 0) return std::nullopt;
  return Identity(about.st_dev, about.st_ino);
}

struct FoundInput {
  std::string sPath;
  std::string sRelative;  ///< Folder below that of the pattern
};

/// A folder stands for all that is in it; "*.txt" for files of this folder.
std::string AsPattern(const std::string& sInput) {
  const std::string pattern = FolderExists(sInput) ? WithSeparator(sInput) + "*" : sInput;
  return HasSeparator(pattern) ? pattern : "./" + pattern;
}

class clsPlanner {
 public:
  clsPlanner(const ConvertRequest& request, clsLongRun& run) : request_(request), run_(run) {}

  bool Plan(std::vector<PlannedFile>& files) {
    for (const std::string& input : request_.inputs) Find(input);
    if (many_ && request_.sOutput.find('*') == std::string::npos && !request_.bBesideInput) {
      return Refuse(kOutputNeedsWildcard);
    }
    if (!CheckOutput()) return false;
    for (const FoundInput& input : inputs_) {
      files.push_back(
          {input.sPath, OutputPathFor(request_.sOutput, input.sPath, input.sRelative, request_.bBesideInput)});
    }
    return CheckOutputsAreApart(files) && CheckNothingIsOverwritten(files);
  }

 private:
  bool Refuse(RunCode code, std::string_view sSubject = {}) {
    run_.host.Report(RunEntry(code, sSubject));
    return false;
  }
  bool Refuse(std::string_view sText) {
    run_.Say(sText);
    return false;
  }

  void Add(std::string sPath, std::string sRelative) {
    if (seen_.insert(sPath).second) inputs_.push_back({std::move(sPath), std::move(sRelative)});
    many_ = many_ || inputs_.size() > 1;
  }

  void Find(const std::string& sInput) {
    if (!HasWildcards(sInput) && !FolderExists(sInput)) return Add(sInput, {});
    if (IsFile(sInput)) return Add(sInput, {});  // A name may hold a "*" or "?".
    many_ = true;
    const std::string pattern = AsPattern(sInput);
    const size_t root = BehindLastSeparator(pattern);
    std::vector<std::string> found;
    std::string error;
    bool ok = false;
    BuildFileListing(pattern, request_.bRecursive, found, error, true, ok);
    if (found.empty()) {
      run_.Say(sInput + ": no file found" + (error.empty() ? "" : " (" + error + ")"));
      ++run_.totals.lFilesFailed;
    }
    const bool added_here = !HasSeparator(sInput) && !FolderExists(sInput);
    for (std::string& file : found) {
      const std::string relative = FolderOfPath(std::string_view(file).substr(root));
      Add(added_here ? file.substr(root) : file, relative);
    }
  }

  bool CheckOutput() {
    const std::string& output = request_.sOutput;
    const std::string extension = UpperText(ExtensionOfPath(output));
    if (FolderExists(output) && !request_.bBesideInput) {
      return Refuse(output + " is a folder; name a file in it, or a pattern such as " + WithSeparator(output) +
                    "*.csv");
    }
    if (extension != "CSV" && extension != "XLS" && extension != "XLSX") return Refuse(kOutputType, extension);
    const size_t star = output.find('*');
    if (output.find('?') != std::string::npos || output.find('*', star + 1) != std::string::npos ||
        (star != std::string::npos && HasSeparator(output.substr(star)))) {
      return Refuse(output + ": an output has one \"*\" at most, in its last part, and no \"?\"");
    }
    return true;
  }

  bool CheckOutputsAreApart(const std::vector<PlannedFile>& files) {
    static const std::map<std::string, int32_t> kFormats{
        {"CSV", kFormatCsv}, {"XLSX", kFormatXlsx}, {"XLS", kFormatXls}};
    std::unordered_map<std::string_view, std::string_view> by_output;
    for (const PlannedFile& file : files) {
      const auto [taken, fresh] = by_output.emplace(file.sOutput, file.sInput);
      if (!fresh) {
        return Refuse(file.sOutput + " would be the output of both " + std::string(taken->second) + " and " +
                      file.sInput +
                      "; quote the pattern with -r, so that subfolders are mirrored, or convert them apart");
      }
      if (OutputFormatOfPath(file.sOutput) != kFormats.at(UpperText(ExtensionOfPath(file.sOutput)))) {
        return Refuse(file.sOutput +
                      ": a folder in this path looks like the ending of another kind of file; choose "
                      "another folder");
      }
    }
    return true;
  }

  bool CheckNothingIsOverwritten(const std::vector<PlannedFile>& files) {
    std::set<Identity> kept;
    const auto keep = [&kept](std::string_view sPath) {
      const auto identity = sPath.empty() ? std::nullopt : IdentityOf(sPath);
      if (identity) kept.insert(*identity);
    };
    for (const PlannedFile& file : files) keep(file.sInput);
    keep(request_.sRecipe);
    for (const PlannedFile& file : files) {
      const auto identity = IdentityOf(file.sOutput);
      if (identity && kept.count(*identity) > 0) return Refuse(kOutputIsInput, file.sOutput);
    }
    return true;
  }

  const ConvertRequest& request_;
  clsLongRun& run_;
  std::vector<FoundInput> inputs_;
  std::unordered_set<std::string> seen_;
  bool many_ = false;
};

}  // namespace

std::string OutputPathFor(std::string_view sOutput, std::string_view sInput, std::string_view sRelative,
                          bool bBesideInput) {
  const size_t name = BehindLastSeparator(sOutput);
  std::string path =
      bBesideInput ? FolderOfPath(sInput) : std::string(sOutput.substr(0, name)) + std::string(sRelative);
  const std::string_view last = sOutput.substr(name);
  const size_t star = last.find('*');
  if (star == std::string_view::npos) return path.append(last);
  return path.append(last.substr(0, star)).append(BaseNameOfPath(sInput)).append(last.substr(star + 1));
}

bool PlanBatch(const ConvertRequest& request, clsLongRun& run, std::vector<PlannedFile>& files) {
  return clsPlanner(request, run).Plan(files);
}

}  // namespace quillon
