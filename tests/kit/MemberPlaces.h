#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

/// The offsets of class members chosen by the compiler, so that a test can compare a class with one that it declares.
/// Both compilers of the project use the same ABI: a pointer to a data member is its offset in the object; a pointer to
/// a virtual member function is one more than the offset of its slot in the table.
namespace test_support {

template <typename Class, typename Member>
std::ptrdiff_t OffsetOf(Member Class::*member) {
    static_assert(sizeof(member) == sizeof(std::ptrdiff_t));
    return std::bit_cast<std::ptrdiff_t>(member);
}

/// -1 for a function that is not virtual.
template <typename Function>
std::ptrdiff_t SlotOf(Function function) {
    struct Representation {
        std::uintptr_t pointer;
        std::ptrdiff_t adjustment;
    };
    static_assert(sizeof(function) == sizeof(Representation));
    const std::uintptr_t pointer = std::bit_cast<Representation>(function).pointer;
    return pointer % 2 == 1 ? static_cast<std::ptrdiff_t>((pointer - 1) / sizeof(void*)) : -1;
}

} // namespace test_support
