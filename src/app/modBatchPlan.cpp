#include "modBatchPlan.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "CFileSearch.h"
#include "clsSearchedPlaces.h"
#include "modCollections.h"
#include "modConvertCommand.h"
#include "modExcelLink.h"
#include "modFiles.h"
#include "modPacked.h"
#include "modPaths.h"
#include "modProfileFile.h"
#include "modRunMessages.h"
#include "modStrings.h"
#include "modText.h"

namespace quillon {

namespace {

using Identity = std::pair<dev_t, ino_t>;

/// plBytes, if given, takes the size.
std::optional<Identity> IdentityOf(std::string_view sPath, int64_t* plBytes = nullptr) {
  struct stat about {};
  if (stat(HostPath(sPath).c_str(), &about) != 0) return std::nullopt;
  if (plBytes != nullptr) *plBytes = about.st_size;
  return Identity(about.st_dev, about.st_ino);
}

bool IsLink(std::string_view sPath) {
  struct stat about {};
  return lstat(HostPath(sPath).c_str(), &about) == 0 && S_ISLNK(about.st_mode);
}

struct FoundInput {
  std::string sPath;
  std::string sRelative;  ///< Folder below that of the pattern
};

/// A folder stands for all that is in it; "*.txt" for files of this folder.
std::string AsPattern(const std::string& sInput) {
  const std::string folder = HasSeparator(sInput) ? WithSeparator(sInput) : sInput + "/";
  const std::string pattern = FolderExists(sInput) ? folder + "*" : sInput;
  return HasSeparator(pattern) ? pattern : "./" + pattern;
}

/// What helps against two inputs of one output.
std::string HowToPart(const std::string& sInput, const std::string& sOther) {
  if (FolderOfPath(sInput) == FolderOfPath(sOther)) return "; convert them apart, or rename one of them";
  return "; quote the pattern with -r, so that subfolders are mirrored, or convert them apart";
}

class clsPlanner {
 public:
  clsPlanner(const ConvertRequest& request, clsLongRun& run) : request_(request), run_(run) {}

  bool Plan(std::vector<PlannedFile>& files) {
    for (const std::string& input : request_.inputs) {
      if (input.empty()) return Refuse("the name of an INPUT is empty");
      Find(input);
    }
    if (request_.shard && request_.sOutput.find('*') == std::string::npos) {
      return Refuse("--shard goes with an output for each input: OUTPUT holds a \"*\" then");
    }
    if (many_ && request_.sOutput.find('*') == std::string::npos && !request_.options.bSaveInOriginalFolder) {
      ReportEntry entry = RunEntry(kOutputNeedsWildcard);
      entry.sErr2 = "There are several inputs, so OUTPUT needs a \"*\", which stands for each input's name.";
      entry.sErr3 = "For example: -o 'out/*.csv'";
      run_.host.Report(entry);
      return false;
    }
    if (!CheckOutput()) return false;
    for (const FoundInput& input : inputs_) {
      files.push_back({input.sPath, OutputPathFor(request_.sOutput, input.sPath, input.sRelative,
                                                  request_.options.bSaveInOriginalFolder)});
    }
    if (!CheckOutputsAreApart(files) || !CheckNextRunFindsTheSame(files)) return false;
    LookAtInputs(files);
    // Of a million files on a network, a process looks at the outputs of its own part alone.
    TakeShard(files);
    return CheckNothingIsOverwritten(files);
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
    searched_.Add(pattern, request_.options.bDoSubfolders);
    const size_t root = BehindLastSeparator(pattern);
    CFileSearch search;
    int32_t result = 0;
    search.BuildFileList(pattern, request_.options.bDoSubfolders, true, result);
    std::vector<std::string> found;
    // Hidden files are meant where the mask says so, as for a shell.
    const bool hidden = pattern.substr(root).starts_with('.');
    for (const CFile& file : search.Files()) {
      const bool is_hidden = file.filename[BehindLastSeparator(file.filename)] == '.';
      if (hidden || !is_hidden) found.push_back(file.filename);
    }
    if (found.empty() || result != 0) {
      std::string text = sInput + (found.empty() ? ": no file found" : ": not all of it could be searched");
      if (result != 0) text += " (" + search.LastErrorFolder() + ": " + search.LastErrorDescription() + ")";
      run_.Say(text);
      ++run_.totals.lFilesFailed;
    }
    const bool added_here = !HasSeparator(sInput) && !FolderExists(sInput);
    for (const std::string& file : SortCollection(found, false)) {
      const std::string below = file.substr(root);
      // Without its folder such a name would be one on a drive.
      const bool plain = added_here && below.find(':') == std::string::npos;
      Add(plain ? below : file, FolderOfPath(below));
    }
  }

  bool CheckOutput() {
    const std::string& output = request_.sOutput;
    const std::string extension = UpperText(ExtensionOfPath(output));
    if (FolderExists(output) && !request_.options.bSaveInOriginalFolder) {
      const std::string folder = HasSeparator(output) ? WithSeparator(output) : output + "/";
      return Refuse(output + " is a folder; name a file in it, or a pattern such as " + folder + "*.csv");
    }
    if (extension.empty()) return Refuse(output + " has no extension; .csv, .xlsx or .xls says what is made");
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
    // Path texts that differ in case alone name one file.
    std::unordered_map<std::string, const PlannedFile*> by_output;
    for (const PlannedFile& file : files) {
      const auto [taken, fresh] = by_output.emplace(UpperText(searched_.RealPath(file.sOutput)), &file);
      if (!fresh) {
        const bool bSame = !EqualNoCase(taken->second->sOutput, file.sOutput) || taken->second->sOutput == file.sOutput;
        return Refuse(file.sOutput + " would be the output of both " + taken->second->sInput + " and " + file.sInput +
                      (bSame ? HowToPart(taken->second->sInput, file.sInput)
                             : ", as names that differ in case alone are one; rename one of them"));
      }
      if (OutputFormatOfPath(file.sOutput) != kFormats.at(UpperText(ExtensionOfPath(file.sOutput)))) {
        return Refuse(file.sOutput +
                      ": a part of this path looks like the ending of another kind of file; choose "
                      "another name or folder");
      }
    }
    return true;
  }

  /// Looks at each input: its size, and which file it is.
  void LookAtInputs(std::vector<PlannedFile>& files) {
    const auto keep = [this](std::string_view sPath, int64_t* plBytes) {
      const auto identity = sPath.empty() ? std::nullopt : IdentityOf(sPath, plBytes);
      if (identity) kept_.insert(*identity);
    };
    for (PlannedFile& file : files) keep(file.sInput, &file.lBytes);
    keep(request_.sRecipe, nullptr);
    if (!request_.sProfile.empty()) keep(FindProfile(ProfileFor(request_.sProfile)), nullptr);
  }

  /// Leaves the part of this process alone, and tells which it is.
  void TakeShard(std::vector<PlannedFile>& files) {
    if (!request_.shard) return;
    ShardSummary summary;
    files = FilesOfShard(files, *request_.shard, summary);
    const std::string sText = fmt::format("shard {}/{} takes {} of {} files, {} of {} bytes; listing {}",
                                          request_.shard->lPart, request_.shard->lParts, summary.nFiles,
                                          summary.nAllFiles, summary.lBytes, summary.lAllBytes, summary.sListing);
    run_.Note(sText);
  }

  /// In a folder that isn't there nothing is looked for; outputs of one folder mostly follow each other.
  std::optional<Identity> IdentityOfOutput(const std::string& sOutput) {
    const std::string folder = FolderOfPath(sOutput);
    if (!folder.empty() && folder == sMissingFolder_) return std::nullopt;
    const auto identity = IdentityOf(sOutput);
    if (!identity && !folder.empty() && !FolderExists(folder)) sMissingFolder_ = folder;
    return identity;
  }

  bool CheckNothingIsOverwritten(const std::vector<PlannedFile>& files) {
    const auto list = request_.sReport.empty() ? std::nullopt : IdentityOf(request_.sReport);
    // One that isn't there yet has a name alone.
    const auto becomes_list = [this](const std::string& sOutput) {
      return !request_.sReport.empty() && EqualNoCase(AbsolutePath(sOutput), request_.sReport);
    };
    std::map<Identity, const PlannedFile*> outputs;
    for (const PlannedFile& file : files) {
      const auto identity = IdentityOfOutput(file.sOutput);
      const auto* const other = identity ? outputs.emplace(*identity, &file).first->second : &file;
      // A link is followed when an output is written; a second name of its own is replaced alone.
      if (other != &file && (IsLink(file.sOutput) || IsLink(other->sOutput))) {
        return Refuse(file.sOutput + " and " + other->sOutput + " are one file by a link; remove the link");
      }
      if (identity && kept_.count(*identity) > 0) return Refuse(kOutputIsInput, file.sOutput);
      if ((identity && identity == list) || becomes_list(file.sOutput))
        return Refuse(request_.sReport + " is an output; choose another result list");
    }
    if (list && kept_.count(*list) > 0) {
      return Refuse(request_.sReport + " is an input, the recipe or the profile; choose another result list");
    }
    return true;
  }

  /// What this run writes must not be an input of another shard, or of this command run again.
  bool CheckNextRunFindsTheSame(const std::vector<PlannedFile>& files) {
    if (!request_.sReport.empty() && searched_.WouldFind(request_.sReport)) {
      return Refuse(request_.sReport + " lies where inputs are searched; choose another place for the result list");
    }
    if (!request_.shard && !request_.bSkipDone) return true;
    for (const PlannedFile& file : files) {
      if (!searched_.WouldFindOutput(file.sOutput)) continue;
      return Refuse(file.sOutput +
                    " would be an input of the next run; choose a pattern that finds reports alone, or " +
                    "another folder for OUTPUT");
    }
    return true;
  }

  const ConvertRequest& request_;
  clsLongRun& run_;
  std::vector<FoundInput> inputs_;
  std::unordered_set<std::string> seen_;
  clsSearchedPlaces searched_;
  std::set<Identity> kept_;  ///< Inputs, recipe and profile
  std::string sMissingFolder_;
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
  return path.append(last.substr(0, star)).append(BaseNameOfReport(sInput)).append(last.substr(star + 1));
}

bool PlanBatch(const ConvertRequest& request, clsLongRun& run, std::vector<PlannedFile>& files) {
  return clsPlanner(request, run).Plan(files);
}

}  // namespace quillon
