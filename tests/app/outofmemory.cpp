#include "outofmemory.h"

#include <QHash>

#include <cstdlib>
#include <new>

int memoryEndsAt = 0;

extern "C" char __executable_start, etext; // NOLINT(bugprone-reserved-identifier)

namespace {

/// Hashes of Qt end the program when they get no memory, so they always do.
void *Allocate(size_t size, const void *caller)
{
    constexpr size_t kHash = sizeof(QHashPrivate::Data<QHashPrivate::Node<int, int>>);
    const bool isOwn = caller >= &__executable_start && caller < &etext && size != kHash;
    void *memory = isOwn && memoryEndsAt > 0 && --memoryEndsAt == 0 ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

} // namespace

void *operator new(size_t size)
{
    return Allocate(size, __builtin_return_address(0));
}
void *operator new[](size_t size)
{
    return Allocate(size, nullptr);
}
void *operator new(size_t size, const std::nothrow_t &) noexcept
{
    return std::malloc(size == 0 ? 1 : size);
}
void operator delete(void *memory) noexcept
{
    std::free(memory);
}
void operator delete[](void *memory) noexcept
{
    std::free(memory);
}
void operator delete(void *memory, size_t) noexcept
{
    std::free(memory);
}
void operator delete[](void *memory, size_t) noexcept
{
    std::free(memory);
}
