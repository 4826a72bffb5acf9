#include "modLinkThreads.h"

#include "clsSideThread.h"

namespace quillon {

void PackOnSecondThread(bool bSecond) {
  UseSideThreads(bSecond);
}

}  // namespace quillon
