#include <afxcoll.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <type_traits>
#include <vector>

#include "expect.h"

namespace {

using Numbers = std::vector<int>;

Numbers Content(const CArray<int>& array) {
    return {array.GetData(), array.GetData() + array.GetSize()};
}

Numbers Content(const CList<int>& list) {
    Numbers content;
    for (POSITION at = list.GetHeadPosition(); at != nullptr;)
        content.push_back(list.GetNext(at));
    return content;
}

// Booleans have addresses, too.
static_assert(std::is_same_v<decltype(std::declval<CArray<bool>&>()[0]), bool&>);

TEST(Array, AddsInsertsAndRemoves) {
    CArray<int> array;
    EXPECT_EQ(array.GetData(), nullptr);
    EXPECT_EQ(array.Add(1), 0);
    EXPECT_EQ(array.Add(2), 1);
    array.InsertAt(1, 9, 2);
    array.InsertAt(6, 7);
    EXPECT_EQ(Content(array), (Numbers{1, 9, 9, 2, 0, 0, 7}));
    array.RemoveAt(1, 2);
    array.SetAtGrow(6, array[0]);
    EXPECT_EQ(Content(array), (Numbers{1, 2, 0, 0, 7, 0, 1}));
    EXPECT_EQ(array.Append(array), 7);
    EXPECT_EQ(array.GetSize(), 14);
    CArray<int> copy;
    copy.Copy(array);
    copy.SetSize(1);
    copy.InsertAt(0, &copy);
    copy.InsertAt(3, &copy);
    EXPECT_EQ(Content(copy), (Numbers{1, 1, 0, 1, 1}));
    array.RemoveAll();
    EXPECT_TRUE(array.IsEmpty());
}

TEST(Collections, RefuseWhatIsNotThere) {
    CArray<int> array;
    array.SetSize(3);
    CList<int> list;
    POSITION nowhere = nullptr;
    const std::function<void()> actions[] = {[&] { array.GetAt(3); },
                                             [&] { array.SetAt(-1, 1); },
                                             [&] { array.RemoveAt(2, 2); },
                                             [&] { array.RemoveAt(0, -1); },
                                             [&] { array.InsertAt(-1, 1); },
                                             [&] { array.SetSize(-1); },
                                             [&] { array.SetSize(std::numeric_limits<INT_PTR>::max()); },
                                             [&] { array.InsertAt(0, nullptr); },
                                             [&] { list.GetHead(); },
                                             [&] { list.RemoveTail(); },
                                             [&] { list.GetNext(nowhere); }};
    for (const auto& action : actions)
        EXPECT_TRUE(test::IsInvalid(action)) << "row " << &action - actions + 1;
    EXPECT_EQ(array.GetSize(), 3);
}

TEST(Array, TakesCopiesOfItsOwnElements) {
    CStringArray array;
    array.Add(_T("a text that is too long to lie inside the object"));
    for (int i = 0; i < 100; ++i) {  // far enough to move the elements
        array.Add(array[0]);
        array.InsertAt(0, array[i]);
        array.SetAtGrow(array.GetSize(), array[i]);
    }
    EXPECT_EQ(array.GetSize(), 301);
    for (INT_PTR i = 0; i < array.GetSize(); ++i)
        ASSERT_EQ(array[i], array[0]);
}

TEST(List, KeepsPositionsWhileNeighboursComeAndGo) {
    CList<int> list;
    const POSITION two = list.AddTail(2);
    list.AddHead(1);
    const POSITION three = list.InsertAfter(two, 3);
    list.InsertBefore(two, 15);
    EXPECT_EQ(Content(list), (Numbers{1, 15, 2, 3}));
    list.RemoveAt(two);
    EXPECT_EQ(list.GetAt(three), 3);
    EXPECT_EQ(list.RemoveHead(), 1);
    EXPECT_EQ(list.RemoveTail(), 3);
    EXPECT_EQ(Content(list), Numbers{15});
    EXPECT_EQ(list.GetHead(), list.GetTail());
}

TEST(List, FindsAndLetsTheWalkerRemoveWhatItStandsOn) {
    CList<int> list;
    for (const int value : {0, 1, 2, 3, 4, 5, 1})
        list.AddTail(value);
    EXPECT_EQ(list.Find(1), list.FindIndex(1));
    EXPECT_EQ(list.Find(1, list.Find(1)), list.GetTailPosition());
    EXPECT_EQ(list.Find(6), nullptr);
    EXPECT_EQ(list.FindIndex(7), nullptr);
    EXPECT_EQ(list.FindIndex(-1), nullptr);
    for (POSITION at = list.GetHeadPosition(); at != nullptr;) {
        const POSITION here = at;
        if (list.GetNext(at) % 2 == 0)
            list.RemoveAt(here);
    }
    EXPECT_EQ(Content(list), (Numbers{1, 3, 5, 1}));
    POSITION back = list.GetTailPosition();
    EXPECT_EQ(list.GetPrev(back), 1);
    EXPECT_EQ(list.GetAt(back), 5);
}

TEST(Map, LeadsFromPointersToPointers) {
    int places[4] = {};
    CMapPtrToPtr map;
    void* value = &map;
    EXPECT_EQ(map.GetStartPosition(), nullptr);
    for (int& place : places) {
        map.SetAt(&place, nullptr);
        map[&place] = &place + 1;
    }
    EXPECT_FALSE(map.Lookup(&map, value));
    EXPECT_EQ(value, &map);
    EXPECT_TRUE(map.Lookup(&places[2], value));
    EXPECT_EQ(value, &places[3]);
    int seen = 0;
    for (POSITION at = map.GetStartPosition(); at != nullptr; ++seen) {
        void* key = nullptr;
        map.GetNextAssoc(at, key, value);
        EXPECT_EQ(value, static_cast<int*>(key) + 1);
        EXPECT_TRUE(map.RemoveKey(key));
        EXPECT_FALSE(map.RemoveKey(key));
    }
    EXPECT_EQ(seen, 4);
    EXPECT_TRUE(map.IsEmpty());
}

}  // namespace
