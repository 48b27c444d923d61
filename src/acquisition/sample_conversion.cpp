#include "acquisition/sample_conversion.h"

#include <cassert>

namespace kv408 {

void store_sample(SampleBuffer& samples, std::size_t index, const Sample& sample) {
    assert(index < samples.mv.size());
    samples.raw[index] = sample.code;
    samples.mv[index] = sample.mv;
}

} // namespace kv408
