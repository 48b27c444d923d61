#include "support/series_stride.h"

#ifdef __SANITIZE_ADDRESS__
const std::size_t kv408::series_stride = 10;
#else
const std::size_t kv408::series_stride = 1;
#endif
