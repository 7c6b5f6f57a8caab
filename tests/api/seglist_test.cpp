// The segment list: growth, copies, positions, and references to its own entries.
#include <gtest/gtest.h>

#include <vector>

#include <orvex/orvex.h>

namespace orvex::test {
namespace {

SEGMENT Numbered(int n) {
  return {{static_cast<double>(n), 0}, {static_cast<double>(n), 1}, n % 2 == 0, n % 3 == 0};
}

CSEGLIST Filled(int count) {
  CSEGLIST list;
  for (int i = 0; i < count; ++i) list.Append(Numbered(i));
  return list;
}

std::vector<int> Numbers(const CSEGLIST& list) {
  std::vector<int> numbers;
  for (int i = 0; i < list.Count(); ++i) {
    const SEGMENT entry = list[i], expected = Numbered(static_cast<int>(entry.Start.x));
    EXPECT_TRUE(entry.End.y == 1 && entry.bStart == expected.bStart && entry.bEnd == expected.bEnd);
    numbers.push_back(static_cast<int>(entry.Start.x));
  }
  return numbers;
}

TEST(SegList, GrowsBySixteenAndCopiesExactly) {
  CSEGLIST list;
  EXPECT_EQ(list.Capacity(), 0);
  for (int i = 0; i < 50; ++i) {
    EXPECT_TRUE(list.Append(Numbered(i)));
    EXPECT_EQ(list.Capacity(), (i / 16 + 1) * 16);
  }
  const CSEGLIST five = Filled(5);
  CSEGLIST copy(five);
  EXPECT_EQ(copy.Capacity(), 5);
  copy.Append(Numbered(5));
  EXPECT_EQ(copy.Capacity(), 21);
  copy = list;
  copy = *&copy;
  EXPECT_EQ(Numbers(copy), Numbers(list));
  EXPECT_EQ(copy.Capacity(), 50);
  copy.Empty();
  EXPECT_EQ(CSEGLIST(copy).Capacity() + copy.Capacity() + copy.Count(), 0);
  EXPECT_EQ(list.Count(), 50);
}

TEST(SegList, InsertsAndDeletesAtItsEndsAndRefusesBeyond) {
  CSEGLIST list;
  EXPECT_FALSE(list.Delete(0));
  EXPECT_FALSE(list.Insert(1, Numbered(9)));
  EXPECT_TRUE(list.Insert(0, Numbered(1)));
  EXPECT_TRUE(list.Insert(0, Numbered(0)));
  EXPECT_TRUE(list.Insert(2, {3, 0}, {3, 1}, false, true));
  EXPECT_TRUE(list.Insert(2, Numbered(2)));
  EXPECT_FALSE(list.Insert(5, Numbered(9)) || list.Insert(-1, Numbered(9)));
  EXPECT_EQ(Numbers(list), (std::vector{0, 1, 2, 3}));
  EXPECT_FALSE(list.Delete(4) || list.Delete(-1));
  EXPECT_TRUE(list.Delete(3) && list.Delete(0));
  EXPECT_EQ(Numbers(list), (std::vector{1, 2}));
  EXPECT_TRUE(list.Delete(0) && list.Delete(0));
  EXPECT_EQ(list.Capacity(), 16);  // the block stays
}

TEST(SegList, AppendsTheSegmentsOfALine) {
  const PROJPOINT line[]{{0, 0}, {1, 2}, {3, 4}};
  CSEGLIST list;
  EXPECT_FALSE(list.AppendMultiple(1, line, true) || list.AppendMultiple(2, nullptr, true));
  EXPECT_EQ(list.Count(), 0);
  EXPECT_TRUE(list.AppendMultiple(3, line, true));
  ASSERT_EQ(list.Count(), 2);  // not closed
  EXPECT_TRUE(list[1].Start.y == 2 && list[1].End.x == 3 && list[1].bStart && list[1].bEnd);
}

TEST(SegList, TakesItsOwnEntriesWhileItsBlockMoves) {
  CSEGLIST list = Filled(16);
  list.Append(list[3]);
  list.Insert(0, list[16]);
  for (int i = list.Count(); i < 32; ++i) list.Append(Numbered(i));
  list.Insert(1, list[31]);
  EXPECT_TRUE(list[0].Start.x == 3 && list[1].Start.x == 31 && list[17].Start.x == 15);
  CSEGLIST points = Filled(16);
  points.Append(points[7].Start, points[7].End, points[7].bStart, points[7].bEnd);
  EXPECT_EQ(Numbers(points).back(), 7);
}

}  // namespace
}  // namespace orvex::test
