// Arguments wider or narrower than the library's 32-bit counts: string indexes of every
// integer type read the same unit as an unsigned one, and a class-level allocation that
// does not fit in 32 bits is refused instead of being cut to a small block.
#include <vorn/foundation/memory.h>
#include <vorn/foundation/stringbase.h>

#include <climits>
#include <cstddef>
#include <cstring>

#include <gtest/gtest.h>

namespace {

TEST(WideIntegerArguments, EveryIndexTypeReadsTheSameUnit) {
  stringbase<char, astringfuncs> const text("field");
  EXPECT_EQ(text[2u], 'e');
  EXPECT_EQ(text[2], 'e');
  EXPECT_EQ(text[2L], 'e');
  EXPECT_EQ(text[2LL], 'e');
  EXPECT_EQ(text[static_cast<short>(4)], 'd');
  EXPECT_EQ(text[static_cast<unsigned char>(0)], 'f');
  stringbase<unsigned short, wstringfuncs> wide;
  wide = reinterpret_cast<unsigned short const*>(u"ab");
  EXPECT_EQ(wide[1], u'b');
  EXPECT_EQ(wide[static_cast<std::size_t>(0)], u'a');
}

TEST(WideIntegerArguments, ClassLevelNewRefusesARequestBeyondThirtyTwoBits) {
  if (sizeof(std::size_t) <= sizeof(unsigned int)) GTEST_SKIP() << "size_t is 32-bit here";
  std::size_t const tooLarge = static_cast<std::size_t>(UINT_MAX) + 2;  // would cut to 1
  EXPECT_EQ(VornAllocator::operator new(tooLarge), nullptr);
  void* const small = VornAllocator::operator new(16);
  ASSERT_NE(small, nullptr);
  std::memset(small, 0, 16);
  VornAllocator::operator delete(small);
}

}  // namespace
