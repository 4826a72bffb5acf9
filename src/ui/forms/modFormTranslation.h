#pragma once

#include "clsForm.h"
#include "clsScreen.h"

namespace quillon {

/// Puts a form's caption, each control's main text (unless its tag is "TranslateFalse") and tool tip through the phrase
/// table, and forces the font that the language wants. Each form calls it in its load.
void TranslateForm(clsForm& form, clsScreen& screen);

}  // namespace quillon
