// Meaning of the export table at the end of a kernel file: slots and entries over the constants of all widths.
// Expects them in namespaces <width>::table inside the current one.
#undef ORPS_EXPORT
#define ORPS_EXPORT(name, ...)                                                                           \
  ORPS_ENTRY(name, N_SSSE3::table::name, N_SSSE3::table::name, N_AVX2::table::name, N_AVX2::table::name, \
             N_AVX3::table::name, N_AVX3::table::name)
