// The desktop program. Its arguments, joined by blanks, are the command text: "/!" opens a job, other switches run one.

#include "clsConsoleHost.h"
#include "modDesktop.h"

int main(int argc, char** argv) {
  quillon::HoldStandardStreams();
  quillon::clsApplication application(argc, argv);
  return quillon::RunDesktop(argc, argv);
}
