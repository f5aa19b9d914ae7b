#include <gtest/gtest.h>
#include <kadata/skin_manager.h>

#include <barrier>
#include <cstring>
#include <set>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t FIELDS = 90;
static_assert(sizeof(SkinInfo) == FIELDS * sizeof(UINT));

SkinInfo Filled(UINT value, std::size_t but = FIELDS) {
    std::vector<UINT> fields(FIELDS, value);
    if (but < FIELDS) {
        fields[but] = 0;
    }
    SkinInfo info;
    std::memcpy(static_cast<void*>(&info), fields.data(), sizeof(info));
    return info;
}

// Ends the instance as the end of the process does.
class Manager : public CSkinManager {
public:
    using CSkinManager::Destroy;
};

class SkinManager : public testing::Test {
protected:
    ~SkinManager() override { Manager::Destroy(); }
};

TEST_F(SkinManager, TakesACompleteSkinOnly) {
    // Button; background, caption button, frame, two of the tool bar, two of the status bar; measures and texts.
    std::set<std::size_t> needed = {0, 21, 27, 33, 39, 45, 51, 57};
    for (std::size_t i = 63; i < FIELDS; ++i) {
        needed.insert(i);
    }
    CSkinManager& manager = *CSkinManager::GetInstance();
    for (std::size_t i = 0; i < FIELDS; ++i) {
        const bool complete = needed.count(i) == 0;
        EXPECT_EQ(Filled(1, i).IsComplete() != FALSE, complete) << i;
        if (!complete) {
            EXPECT_FALSE(manager.Init(Filled(1, i))) << i;
            EXPECT_EQ(manager.GetSkinInfo().nButtonGap, 0U) << i;
        }
    }
    const SkinInfo fresh;
    EXPECT_FALSE(fresh.IsComplete());
    for (const SkinCaptionBitmapInfo& glyph : {fresh.buttonGlyph, fresh.closeGlyph, fresh.minimizeGlyph}) {
        EXPECT_EQ(glyph.crTransparent, SKIN_CORNER_COLOR_KEY);
    }
}

TEST_F(SkinManager, KeepsTheFirstSkinUntilItEnds) {
    CSkinManager& manager = *CSkinManager::GetInstance();
    EXPECT_FALSE(manager.GetSkinInfo().IsComplete());
    EXPECT_TRUE(manager.Init(Filled(1)));
    EXPECT_FALSE(manager.Init(Filled(2)));
    EXPECT_FALSE(manager.Init(SkinInfo()));
    EXPECT_EQ(manager.GetSkinInfo().nRememberAnswerTextID, 1U);

    CSkinManager copy(manager);
    Manager::Destroy();
    EXPECT_EQ(copy.GetSkinInfo().nRememberAnswerTextID, 1U);
    EXPECT_TRUE(CSkinManager::GetInstance()->Init(Filled(2)));
    copy = *CSkinManager::GetInstance();
    EXPECT_EQ(copy.GetSkinInfo().button.nCorner, 2U);
}

TEST_F(SkinManager, IsOneForAllThreads) {
    constexpr std::size_t THREADS = 8;
    for (int round = 0; round < 100; ++round) {
        std::vector<CSkinManager*> seen(THREADS);
        std::barrier start(THREADS);
        std::vector<std::thread> threads;
        for (CSkinManager*& mine : seen) {
            threads.emplace_back([&] {
                start.arrive_and_wait();
                mine = CSkinManager::GetInstance();
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(std::set<CSkinManager*>(seen.begin(), seen.end()).size(), 1U);
        Manager::Destroy();
    }
}

}  // namespace
