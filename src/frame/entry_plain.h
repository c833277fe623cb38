// Meaning of the export table in a file without widths: one implementation behind every slot.
#undef ORPS_EXPORT
#define ORPS_EXPORT(name, ...)                           \
  constexpr decltype(&::name) own_##name = &__VA_ARGS__; \
  ORPS_ENTRY(name, own_##name, own_##name, own_##name, own_##name, own_##name, own_##name)
