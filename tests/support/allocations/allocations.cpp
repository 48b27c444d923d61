#include "support/allocations/allocations.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace {

/// Every block begins with its size, in as many bytes as keep what follows aligned for anything.
constexpr std::size_t header = alignof(std::max_align_t) > sizeof(std::size_t)
                                   ? alignof(std::max_align_t)
                                   : sizeof(std::size_t);

/// The counts; those who allocate have no other place for them.
kv408::Allocations& counts() {
    static kv408::Allocations the_counts;
    return the_counts;
}

// NOLINTBEGIN(cppcoreguidelines-no-malloc): these are what everything else allocates with
void* take(std::size_t size) {
    auto* const block = static_cast<std::byte*>(std::malloc(size + header));
    if (block == nullptr) {
        return nullptr;
    }
    std::memcpy(block, &size, sizeof size);
    counts().bytes += size;
    ++counts().times;
    return block + header;
}

void give_back(void* memory) {
    if (memory == nullptr) {
        return;
    }
    auto* const block = static_cast<std::byte*>(memory) - header;
    std::size_t size = 0;
    std::memcpy(&size, block, sizeof size);
    counts().bytes -= size;
    std::free(block);
}
// NOLINTEND(cppcoreguidelines-no-malloc)

} // namespace

void* operator new(std::size_t size) {
    if (void* const memory = take(size); memory != nullptr) {
        return memory;
    }
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return take(size);
}
void operator delete(void* memory) noexcept {
    give_back(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    give_back(memory);
}
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    give_back(memory);
}

namespace kv408 {

Allocations allocations() {
    return counts();
}

} // namespace kv408
