/* A library that calls itself orpSP and lacks nearly everything. */
#include "orpsp/frame.h"

static const OrpLibraryVersion record = {0, 0, 0, 0, "u8", "poor", "0", "today"};

__attribute__((visibility("default"))) const OrpLibraryVersion* orpsGetLibVersion(void) { return &record; }
