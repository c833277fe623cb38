// Meaning of the export table inside one width's namespace: a typed constant for each implementation.
// No include guard: read once a width.
#undef ORPS_EXPORT
#define ORPS_EXPORT(name, ...) constexpr decltype(&::name) name = &__VA_ARGS__
