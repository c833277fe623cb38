// The version record, one for each processor variant.
#include "frame/entry.h"
#include "orpsp/frame.h"

namespace orpsp {
namespace {

constexpr char kVersion[] = "7.1.0 (r36264)";
constexpr char kDate[] = "Jul 23 2012";

constexpr OrpLibraryVersion kRecords[2] = {
    {7, 1, 0, 36264, {'u', '8'}, "orpSP SSSE3 (u8)", kVersion, kDate},
    {7, 1, 0, 36264, {'n', '8'}, "orpSP Tern (n8)", kVersion, kDate},
};

template <int variant>
const OrpLibraryVersion* version() {
  return &kRecords[variant];
}

}  // namespace

#define ORPS_EXPORT_VARIANTS(name, first, second) ORPS_ENTRY(name, first, second, first, second, first, second)
#include "exports/version.inc"

}  // namespace orpsp
