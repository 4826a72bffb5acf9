#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// The text to show for an English text; the text itself if no language is active or the language lacks it.
std::string Translate(std::string_view sKey);

}  // namespace quillon
