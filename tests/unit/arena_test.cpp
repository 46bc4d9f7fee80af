#include "platform/arena.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <vector>

namespace quillet {
namespace {

struct Sized {
    explicit Sized(std::size_t number) : first(number), last(number) {}
    std::size_t first;
    std::byte filling[80] = {};
    std::size_t last;
};

// Far more than the first pieces hold: no object lies upon another, and none moves.
TEST(ArenaTest, ObjectsLieApartAndStay) {
    constexpr std::size_t kCount = 5000;
    Arena arena;
    std::vector<const Sized*> objects;
    for (std::size_t i = 0; i < kCount; ++i) objects.push_back(arena.New<Sized>(i));
    for (std::size_t i = 0; i < kCount; ++i) {
        ASSERT_EQ(objects[i]->first, i);
        ASSERT_EQ(objects[i]->last, i);
    }
}

TEST(ArenaTest, ObjectsAreAligned) {
    Arena arena;
    for (int i = 0; i < 100; ++i) {
        static_cast<void>(arena.New<char>('x'));
        void* pPlace = arena.New<double>(0.5);
        const void* pGiven = pPlace;
        std::size_t space = sizeof(double);
        EXPECT_EQ(std::align(alignof(double), sizeof(double), pPlace, space), pGiven);
    }
}

struct Thrower {
    explicit Thrower(bool throws) {
        if (throws) throw std::runtime_error("not made");
    }
};

TEST(ArenaTest, AConstructorMayThrow) {
    Arena arena;
    EXPECT_THROW(static_cast<void>(arena.New<Thrower>(true)), std::runtime_error);
    EXPECT_NE(arena.New<Thrower>(false), nullptr);
}

}  // namespace
}  // namespace quillet
