#include "modFrontDoor.h"

int main(int argc, char** argv) {
  return quillon::FrontDoor(argc, argv);
}
