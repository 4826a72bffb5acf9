#include "clsXlsxSaver.h"

#include <algorithm>

#include "clsDeflater.h"
#include "clsOutputFile.h"
#include "clsZipWriter.h"
#include "modOutputMessages.h"
#include "modPaths.h"
#include "modText.h"
#include "modXlsxAddedSheets.h"

namespace quillon {

namespace {

/// Parts that may speak of this workbook's sheets, and the links of pictures to them: not the user's own XML beside it,
/// nor what is kept of other books.
bool MaySpeakOfSheets(std::string_view sName, std::string_view sWorkbook) {
  const std::string_view sFolder = sWorkbook.substr(0, sWorkbook.rfind('/') + 1);
  if (sName.find("externalLinks/") != std::string_view::npos) return false;
  if (!sName.starts_with(sFolder) && !sName.starts_with("docProps/")) return false;
  const std::string sUpper = UpperText(sName);
  return sUpper.ends_with(".XML") || sUpper.ends_with(".VML") || sUpper.ends_with(".RELS");
}

}  // namespace

bool clsXlsxSaver::Changed() const {
  for (size_t i = 0; i < book_.sheets.size(); ++i) {
    if (book_.workbook.sheets[i].bAdded || book_.edit.names[i] != book_.workbook.sheets[i].sName) return true;
    if (book_.sheets[i] != nullptr && book_.sheets[i]->Touched()) return true;
  }
  return book_.edit.nActive != book_.workbook.nActive || book_.workbook.bHidden;
}

bool clsXlsxSaver::Save(std::string_view sPath, Failure& failure) {
  for (const auto& pSheet : book_.sheets) {
    // The run wanted this sheet and could not have it: what it did to others is half of what it was to do.
    if (pSheet != nullptr && pSheet->failure.Failed()) failure = pSheet->failure;
  }
  if (failure.Failed()) return false;
  const std::string sTarget = HostPath(sPath);
  const bool bSameFile = FileState::Of(sTarget) == FileState::Of(book_.package.Path());
  if (bSameFile && !Changed()) return true;
  // The package is read on from the file as it was opened, whoever may have replaced it.
  if (!(FileState::Of(book_.package.Path()) == book_.state)) {
    failure = OutputFailure(sPath, OutputMessage::ChangedMeanwhile);
    return false;
  }
  if (!PrepareEdits(failure) || !MergeSheets(failure) || !DropStrings(failure) || !FollowRenames(failure) ||
      !ChangeLists(failure) || !WritePackage(sPath, failure))
    return false;
  if (bSameFile) book_.state = FileState::Of(book_.package.Path());
  return true;
}

bool clsXlsxSaver::PrepareEdits(Failure& failure) {
  for (size_t i = 0; i < book_.sheets.size(); ++i) {
    const WorkbookSheet& entry = book_.workbook.sheets[i];
    if (!entry.bAdded && book_.edit.names[i] != entry.sName)
      renames_.sheets.push_back({entry.sName, book_.edit.names[i]});
    auto& pSheet = book_.sheets[i];
    if (book_.edit.nActive != book_.workbook.nActive && !entry.sPart.empty()) {
      if (pSheet == nullptr) pSheet = std::make_unique<XlsxSheet>(book_.typing);
      pSheet->edit.bSelected = i == book_.edit.nActive;
    }
    if (pSheet != nullptr && pSheet->Touched() && !PrepareSheet(i, failure)) return false;
  }
  return true;
}

/// A sheet that the run left alone is looked through for formulas: their results may be out of date.
bool clsXlsxSaver::TakeFormulasOf(size_t nSheet) {
  auto& pSheet = book_.sheets[nSheet];
  const WorkbookSheet& entry = book_.workbook.sheets[nSheet];
  const auto nPart = book_.package.Find(entry.sPart);
  if (!entry.bWorksheet || !nPart || (pSheet != nullptr && pSheet->pAnew != nullptr)) return false;
  if (pSheet == nullptr || !pSheet->bScanned) {
    SheetFacts facts;
    clsXmlScanner scanner = book_.package.Scan(*nPart);
    if (!ReadSheetFacts(scanner, facts)) return false;
    if (pSheet == nullptr) pSheet = std::make_unique<XlsxSheet>(book_.typing);
    pSheet->facts = std::move(facts);
    pSheet->bScanned = true;
  }
  return pSheet->facts.HasFormulas();
}

bool clsXlsxSaver::MergeSheets(Failure& failure) {
  const bool bTouched = std::any_of(book_.sheets.begin(), book_.sheets.end(),
                                    [](const auto& pSheet) { return pSheet != nullptr && pSheet->Touched(); });
  clsCellWriter writer(book_.styles, book_.typing, book_.edit.names, book_.workbook.b1904);
  for (size_t i = 0; i < book_.sheets.size(); ++i) {
    const bool bAdded = book_.workbook.sheets[i].bAdded;
    const bool bDropResults = bTouched && !bAdded && TakeFormulasOf(i);
    XlsxSheet* const pSheet = book_.sheets[i].get();
    if (pSheet != nullptr && pSheet->pAnew != nullptr) {
      if (!pSheet->pAnew->Finish(failure)) return false;
      book_.edit.bRecalculate = true;
      continue;
    }
    if (pSheet == nullptr || !(bAdded || bDropResults || pSheet->edit.Touched() || pSheet->edit.bSelected)) continue;
    pSheet->edit.bDropResults = bDropResults;
    pSheet->edit.bWidthsAnew = book_.styles.IsOwn() && !pSheet->edit.cleared.empty();
    if (!MergeSheet(*pSheet, book_.workbook.sheets[i], writer, failure)) return false;
    book_.edit.bRecalculate |= pSheet->edit.Touched();
    bFormulasChanged_ |= pSheet->edit.Touched() && pSheet->facts.HasFormulas();
  }
  nRefused_ = writer.RefusedFormulas();
  nReformatted_ = writer.Reformatted();
  bFormulasChanged_ |= writer.Formulas() > 0;
  return true;
}

bool clsXlsxSaver::MergeSheet(XlsxSheet& sheet, const WorkbookSheet& entry, clsCellWriter& writer, Failure& failure) {
  const auto nFound = book_.package.Find(entry.sPart);
  if (!nFound && !entry.bAdded) return true;
  if (entry.bAdded) added_.push_back(entry.sPart);
  const size_t nPart = entry.bAdded ? book_.package.Parts().size() + added_.size() - 1 : *nFound;
  return MakePart(nPart, failure, [&](clsDeflater& deflater) {
    clsXmlScanner scanner = entry.bAdded ? clsXmlScanner(kEmptySheetPart) : book_.package.Scan(nPart);
    clsSheetMerger merger(scanner, sheet.edit, sheet.facts, writer, renames_,
                          [&deflater](std::string_view sBytes) { deflater.Write(sBytes); });
    if (merger.Run()) return true;
    failure = book_.package.Damaged(entry.sPart);
    return false;
  });
}

bool clsXlsxSaver::SetPart(size_t nPart, std::string_view sBytes, Failure& failure) {
  return MakePart(nPart, failure, [sBytes](clsDeflater& deflater) {
    deflater.Write(sBytes);
    return true;
  });
}

/// Takes what fill puts into the packer as the part's new content; fill gives False with the failure.
bool clsXlsxSaver::MakePart(size_t nPart, Failure& failure, const std::function<bool(clsDeflater&)>& fill) {
  auto pNew = std::make_unique<NewPart>();
  clsDeflater deflater(pNew->spool);
  if (!fill(deflater)) return false;
  deflater.Close(true);
  pNew->nCrc = deflater.Crc();
  pNew->nSize = deflater.Size();
  failure = pNew->spool.LastFailure();
  newParts_[nPart] = std::move(pNew);
  return !failure.Failed();
}

/// Other sheets, charts, pivot caches, controls: what speaks of a sheet or column by its old name.
bool clsXlsxSaver::FollowRenames(Failure& failure) {
  bool bChanged = false;
  for (const auto& [nPart, sBytes] : tables_) {
    std::string sNew;
    clsXmlScanner scanner(sBytes);
    CopyWithRenames(
        scanner, renames_, [&sNew](std::string_view sPiece) { sNew += sPiece; }, bChanged);
    if (!SetPart(nPart, sNew, failure)) return false;
  }
  if (renames_.Empty()) return true;
  for (size_t nPart = 0; nPart < book_.package.Parts().size(); ++nPart) {
    if (nPart == book_.workbook.nPart || !MaySpeakOfSheets(book_.package.Parts()[nPart].sName, book_.workbook.sName))
      continue;
    if (!newParts_.contains(nPart) && AnewOfPart(nPart) == nullptr && !FollowRenamesIn(nPart, failure)) return false;
  }
  return true;
}

/// A part that isn't well-formed is none that a spreadsheet finds names in.
bool clsXlsxSaver::FollowRenamesIn(size_t nPart, Failure& failure) {
  bool bChanged = false;
  clsXmlScanner look = book_.package.Scan(nPart);
  const bool bSound = CopyWithRenames(
      look, renames_, [](std::string_view) {}, bChanged);
  if (!bSound || !bChanged) return true;
  return MakePart(nPart, failure, [&](clsDeflater& deflater) {
    clsXmlScanner scanner = book_.package.Scan(nPart);
    const auto write = [&deflater](std::string_view sBytes) { deflater.Write(sBytes); };
    if (CopyWithRenames(scanner, renames_, write, bChanged)) return true;
    failure = book_.package.Damaged(book_.package.Parts()[nPart].sName);
    return false;
  });
}

bool clsXlsxSaver::ChangeLists(Failure& failure) {
  if (!SetPart(book_.workbook.nPart, EditedWorkbookPart(book_.workbook, book_.edit, renames_), failure)) return false;
  const auto nStyles = book_.package.Find(book_.workbook.TargetOf("styles"));
  if (nStyles && book_.styles.Changed() && !SetPart(*nStyles, book_.styles.Bytes(), failure)) return false;
  return NameAddedSheets(failure) && DropCalculationChain(failure);
}

bool clsXlsxSaver::NameAddedSheets(Failure& failure) {
  if (added_.empty()) return true;
  const WorkbookPart& workbook = book_.workbook;
  // Both are there: the workbook and its sheets were found by them.
  const size_t nRelations = *book_.package.FindRelationshipsOf(workbook.sName);
  const size_t nTypes = *book_.package.Find("[Content_Types].xml");
  return ChangePart(
             nRelations, [&](std::string_view s) { return RelationsWithAdded(s, workbook); }, failure) &&
         ChangePart(
             nTypes, [&](std::string_view s) { return ContentTypesWithAdded(s, workbook); }, failure);
}

/// A part that lists others may be changed more than once: what was made of it before is kept till then.
bool clsXlsxSaver::ChangePart(size_t nPart, const std::function<std::string(std::string_view)>& change,
                              Failure& failure) {
  std::string& sBytes = lists_[nPart];
  if (sBytes.empty() && !book_.package.ReadAll(nPart, sBytes, failure)) return false;
  sBytes = change(sBytes);
  return SetPart(nPart, sBytes, failure);
}

/// The chain lists the cells that hold formulas; one that lists others would have to be repaired, and a spreadsheet
/// makes a missing one anew.
bool clsXlsxSaver::DropCalculationChain(Failure& failure) {
  const std::string sChain = book_.workbook.TargetOf("calcChain");
  const auto nChain = book_.package.Find(sChain);
  if (!nChain || !bFormulasChanged_) return true;
  nDropped_ = nChain;
  // Both are there: the workbook was found by the one, its relationship to the chain by the other.
  const auto nRelations = book_.package.FindRelationshipsOf(book_.workbook.sName);
  const auto nTypes = book_.package.Find("[Content_Types].xml");
  return DropFromPart(
             *nRelations,
             [](const clsXmlScanner& scanner) { return scanner.AttributeText("Type").ends_with("/calcChain"); },
             failure) &&
         DropFromPart(
             *nTypes,
             [&](const clsXmlScanner& scanner) { return EqualNoCase(scanner.AttributeText("PartName"), "/" + sChain); },
             failure);
}

bool clsXlsxSaver::DropFromPart(size_t nPart, const std::function<bool(const clsXmlScanner&)>& bDrop,
                                Failure& failure) {
  return ChangePart(
      nPart, [&](std::string_view sBytes) { return WithoutElements(sBytes, bDrop); }, failure);
}

/// The old order, the list of content types first.
std::vector<size_t> clsXlsxSaver::PartOrder() const {
  std::vector<size_t> order;
  for (size_t i = 0; i < book_.package.Parts().size(); ++i)
    if (i != nDropped_) order.push_back(i);
  for (size_t i = 0; i < added_.size(); ++i) order.push_back(book_.package.Parts().size() + i);
  std::stable_partition(order.begin(), order.end(),
                        [&](size_t i) { return EqualNoCase(PartName(i), "[Content_Types].xml"); });
  return order;
}

/// The sheet of the part, if it is written anew.
XlsxSheet* clsXlsxSaver::AnewOfPart(size_t nPart) const {
  for (size_t i = 0; i < book_.sheets.size(); ++i) {
    XlsxSheet* const pSheet = book_.sheets[i].get();
    if (pSheet != nullptr && pSheet->pAnew != nullptr && book_.package.Find(book_.workbook.sheets[i].sPart) == nPart)
      return pSheet;
  }
  return nullptr;
}

bool clsXlsxSaver::WritePackage(std::string_view sPath, Failure& failure) {
  clsOutputFile file;
  if (!file.Open(sPath, failure)) return false;
  clsZipWriter zip(file);
  for (const size_t nPart : PartOrder()) {
    const auto changed = newParts_.find(nPart);
    if (changed != newParts_.end()) {
      NewPart& made = *changed->second;
      if (!zip.AddSpooled({PartName(nPart), 8, made.nCrc, made.nSize, 0}, {&made.spool}, failure)) return false;
      continue;
    }
    if (XlsxSheet* const pSheet = AnewOfPart(nPart)) {
      const bool bActive = pSheet == book_.sheets[book_.edit.nActive].get();
      if (!pSheet->pAnew->Save(zip, PartName(nPart), bActive, failure)) return false;
      continue;
    }
    const PackagePart& part = book_.package.Parts()[nPart];
    zip.BeginPacked(
        {part.sName, part.nMethod, part.nCrc, static_cast<int64_t>(part.nSize), static_cast<int64_t>(part.nPacked)});
    if (!CopyPacked(nPart, file, failure)) return false;
  }
  zip.Finish();
  return file.Commit(failure);
}

bool clsXlsxSaver::CopyPacked(size_t nPart, clsOutputFile& file, Failure& failure) {
  const PackagePart& part = book_.package.Parts()[nPart];
  const auto reader = book_.package.Read(nPart, true);
  std::vector<char> block(size_t{64} << 10);
  uint64_t nCopied = 0;
  int64_t nRead = 0;
  while (reader != nullptr && (nRead = reader->Read(block.data(), block.size())) > 0) {
    file.Write({block.data(), static_cast<size_t>(nRead)});
    nCopied += static_cast<uint64_t>(nRead);
  }
  if (reader != nullptr && nRead == 0 && nCopied == part.nPacked) return true;
  failure = book_.package.Damaged(part.sName);
  return false;
}

}  // namespace quillon
