#pragma once

#include <QDialog>

#include "clsFormBinder.h"
#include "clsHost.h"

namespace quillon {

/// Property of a dialog that is to be as high as its wrapped texts need at its width, once they are known.
inline constexpr const char* kFitsItsTexts = "fitsItsTexts";

/// Arranges the controls of a form in a dialog. A form that has no layout of its own shows its controls in a column.
void LayoutDialog(clsForm& form, clsFormBinder& binder, QDialog& dialog, clsHost& host);

// Editors bring more than controls; their layouts stand in files of their own.
void LayoutProfileEditor(clsForm& form, clsFormBinder& binder, QDialog& dialog);
void LayoutFindTables(clsForm& form, clsFormBinder& binder, QDialog& dialog);
void LayoutProof(clsForm& form, clsFormBinder& binder, QDialog& dialog);
void LayoutRecipeEditor(clsForm& form, clsFormBinder& binder, QDialog& dialog);

}  // namespace quillon
