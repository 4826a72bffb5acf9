#include "clsXmlCopier.h"

#include <algorithm>
#include <array>

#include "modText.h"
#include "modXmlReading.h"

namespace quillon {

namespace {

// Elements whose text is a formula or a reference, in sheets, charts, tables, names, controls and their extensions.
constexpr std::array<std::string_view, 11> kFormulaElements = {
    "f",        "formula",   "formula1",  "formula2", "definedName", "calculatedColumnFormula", "totalsRowFormula",
    "FmlaLink", "FmlaRange", "FmlaGroup", "sqref"};

struct AttributeOf {
  std::string_view sElement, sAttribute;
  bool bFormula;  ///< Else a bare name of a sheet
};
constexpr std::array<AttributeOf, 8> kAttributes = {{{"worksheetSource", "sheet", false},
                                                     {"dataRef", "sheet", false},
                                                     {"rangeSet", "sheet", false},
                                                     {"hyperlink", "location", true},
                                                     {"Relationship", "Target", true},
                                                     {"formControlPr", "fmlaLink", true},
                                                     {"formControlPr", "fmlaRange", true},
                                                     {"sp", "textlink", true}}};

std::string NewSheetName(const std::string& sName, const FormulaRenames& renames) {
  for (const FormulaRenames::Sheet& sheet : renames.sheets)
    if (EqualNoCase(sheet.sOld, sName)) return sheet.sNew;
  return sName;
}

}  // namespace

void clsXmlCopier::CopyToken() {
  if (renames_.Empty()) return Put(scanner_.Raw());
  if (scanner_.Token() == XmlToken::Text) return CopyText();
  scanner_.IsOpening() ? CopyTag() : Put(scanner_.Raw());
}

void clsXmlCopier::CopyText() {
  const std::string_view sParent = scanner_.Parent();
  const bool bTitle = sParent == "lpstr";
  if (!bTitle && std::find(kFormulaElements.begin(), kFormulaElements.end(), sParent) == kFormulaElements.end())
    return Put(scanner_.Raw());
  std::string sText;
  scanner_.AppendText(sText);
  // The list of titles in the document's properties holds bare names of sheets, and references to names.
  std::string sNew = bTitle ? NewSheetName(sText, renames_) : sText;
  if (sNew == sText) sNew = RenamedFormula(sText, renames_);
  if (sNew == sText) return Put(scanner_.Raw());
  std::string sEscaped;
  AppendEscaped(sNew, sEscaped);
  Put(sEscaped);
  bChanged_ = true;
}

void clsXmlCopier::CopyTag() {
  std::string sTag;
  for (const AttributeOf& known : kAttributes) {
    if (known.sElement != scanner_.LocalName() || !scanner_.Attribute(known.sAttribute)) continue;
    const std::string sOld = scanner_.AttributeText(known.sAttribute);
    const std::string sNew = known.bFormula ? RenamedFormula(sOld, renames_) : NewSheetName(sOld, renames_);
    if (sNew == sOld) continue;
    std::string sEscaped;
    AppendEscaped(sNew, sEscaped);
    sTag = WithAttribute(sTag.empty() ? scanner_.Raw() : sTag, known.sAttribute, sEscaped);
    bChanged_ = true;
  }
  Put(sTag.empty() ? scanner_.Raw() : sTag);
}

bool CopyWithRenames(clsXmlScanner& scanner, const FormulaRenames& renames, const ByteSink& sink, bool& bChanged) {
  clsXmlCopier copier(scanner, renames, sink);
  while (scanner.Next() != XmlToken::End) {
    if (scanner.Token() == XmlToken::Failed) return false;
    copier.CopyToken();
  }
  copier.Flush();
  bChanged = copier.Changed();
  return true;
}

}  // namespace quillon
