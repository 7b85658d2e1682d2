#include "Allocations.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t count = 0;

void* counted(std::size_t size, std::size_t alignment) {
    ++count;
    const std::size_t rounded = (size + alignment - 1) / alignment * alignment;
    void* memory = std::aligned_alloc(alignment, rounded > 0 ? rounded : alignment);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

namespace velmo::test {

std::size_t allocationsOfThisThread() {
    return count;
}

} // namespace velmo::test

// Every form is here, so that none is left to a sanitizer's own allocator and freed by another.
void* operator new(std::size_t size) {
    return counted(size, alignof(std::max_align_t));
}

void* operator new[](std::size_t size) {
    return counted(size, alignof(std::max_align_t));
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return counted(size, alignof(std::max_align_t));
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return counted(size, alignof(std::max_align_t));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    return counted(size, static_cast<std::size_t>(alignment));
}

void* operator new[](std::size_t size, std::align_val_t alignment) {
    return counted(size, static_cast<std::size_t>(alignment));
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::align_val_t) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::align_val_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}
