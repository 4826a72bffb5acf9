#pragma once

namespace quillon {

/// Lives while clsApplication is made. Where no window can be opened (the display is gone, or its plugin isn't there)
/// the toolkit would end the program by a signal behind half a page of its own: instead the program says so in one line
/// and ends with the status that a missing display has. What else the toolkit says meanwhile comes when this one is
/// gone.
class clsDisplayWatch {
 public:
  /// nStatus: of a program that can't open a window.
  explicit clsDisplayWatch(int nStatus);
  clsDisplayWatch(const clsDisplayWatch&) = delete;
  clsDisplayWatch& operator=(const clsDisplayWatch&) = delete;
  ~clsDisplayWatch();
};

}  // namespace quillon
