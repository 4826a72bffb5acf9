#pragma once

#include <QIcon>
#include <QPalette>

namespace quillon {

enum class Icon { Application, Convert, Pause, Options, File, Folder };

/// A picture drawn for the colours of the palette, sharp at every scale. It needs no plugin and no file.
QIcon MakeIcon(Icon icon, const QPalette& palette);

}  // namespace quillon
