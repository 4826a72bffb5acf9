#pragma once

namespace quillon {

/// Whether large sheets are packed on a second thread, which is so from the start where there are two processors.
/// The bytes are the same.
void PackOnSecondThread(bool bSecond);

}  // namespace quillon
