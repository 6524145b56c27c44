// SPDX-License-Identifier: MIT
#include "tests/host/debug_store.h"

#include <kvgeom/kvgeom.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

namespace kvgeom::test {
namespace {

/// Works in a folder of its own, where the log goes.
class InFolder {
  public:
    InFolder() : m_before(std::filesystem::current_path()) {
        std::filesystem::current_path(m_folder.Path(""));
    }
    ~InFolder() { std::filesystem::current_path(m_before); }
    InFolder(const InFolder&) = delete;
    InFolder& operator=(const InFolder&) = delete;

    std::string Log() const {
        std::string log = ReadFile(m_folder.Path("math_assert_release.log"));
        std::erase(log, '\r');
        return log;
    }

  private:
    ScratchFolder m_folder;
    std::filesystem::path m_before;
};

TEST(DebugSwitches, HaveTheirDefaultsWithoutAKey) {
    const DebugStore store;
    EXPECT_EQ(Scenario("level boundary selfxo surfaces coremath"), "0\n1\n0\n0\n0\n");
    EXPECT_EQ(store.Number("MathValidateLevel"), std::nullopt);
}

TEST(DebugSwitches, GoByTheFirstByteOfTheirValue) {
    const std::string all = "level boundary selfxo surfaces coremath";
    const struct {
        std::uint32_t value;
        std::string results;
    } rows[] = {{1, "1\n0\n1\n1\n1\n"},
                {2, "2\n1\n0\n0\n0\n"},
                {255, "-1\n1\n0\n0\n0\n"},
                {257, "1\n0\n1\n1\n1\n"},
                {300, "44\n1\n0\n0\n0\n"}};
    const auto set = [](DebugStore& store, const auto& setter) {
        for (const char* const name :
             {"MathValidateLevel", "SkipCheckGeom3dBoundaries", "ValidateBndSelfInterXO",
              "ValidateAllGTSrfBnd", "ValidateMathEnabled"}) {
            setter(store, name);
        }
    };
    for (const auto& row : rows) {
        DebugStore store;
        set(store, [&row](DebugStore& s, const char* name) { s.SetNumber(name, row.value); });
        EXPECT_EQ(Scenario(all), row.results) << row.value;
    }
    DebugStore store;
    store.SetBytes("SkipCheckGeom3dBoundaries", {1});
    store.SetBytes("ValidateMathEnabled", {1, 2, 3, 4, 5});
    store.SetText("MathValidateLevel", "A");
    EXPECT_EQ(Scenario("level boundary coremath"), "65\n0\n0\n") << "short, long and other data";
}

TEST(DebugSwitches, AreReadOnceUnlessTheLevelIsSet) {
    DebugStore store;
    store.SetNumber("MathValidateLevel", 5);
    store.SetNumber("ValidateMathEnabled", 1);
    EXPECT_EQ(Scenario("setlevel=3 level setlevel=-70000 level"), "3\n-70000\n");
#if !defined(_WIN32)
    const std::string remove = " remove=" + store.Path() + " ";
    EXPECT_EQ(Scenario("level coremath" + remove + "level reset coremath boundary"),
              "5\n1\n5\n1\n1\n");
#endif
}

TEST(DebugEntry, IsReadOrCreatedOnceForAllNames) {
    DebugStore store;
    EXPECT_EQ(Scenario("entry=First,-2 entry=Second,7"), "-2\n-2\n");
    EXPECT_EQ(store.Number("First"), 0xFFFFFFFEU);
    EXPECT_EQ(store.Number("Second"), std::nullopt);
    EXPECT_EQ(Scenario("entry=Second,7 entry=First,1"), "7\n7\n");
    EXPECT_EQ(Scenario("entry=FIRST,9"), "-2\n");
    store.SetBytes("Long", {1, 2, 3, 4, 5});
    EXPECT_EQ(Scenario("entry=Long,6"), "6\n");
    EXPECT_EQ(store.Number("Long"), 6U);
    store.SetBytes("Short", {1, 2});
    EXPECT_EQ(Scenario("entry=Short,6"), "513\n");
}

TEST(AssertionLog, IsWrittenFromLevelTwoOn) {
    const InFolder folder;
    DebugStore store;
    EXPECT_EQ(Scenario("invld=silent print=to_the_stream log=1"), "#~# to_the_stream\n0\n");
    EXPECT_EQ(store.Number("ValidateReleaseMath"), 0U);
    EXPECT_EQ(folder.Log(), "");
    const struct {
        std::uint32_t level;
        std::string out;
        std::string log;
    } rows[] = {{1, "1\n1\n", ""},
                {2, "2\n2\n", "#~# one\n#~# two\n"},
                {3, "3\nhanded over\n3\n", "#~# one\n#~# two\n#~# handed over\n"}};
    std::string log;
    for (const auto& row : rows) {
        DebugStore fresh;
        fresh.SetNumber("ValidateReleaseMath", row.level);
        EXPECT_EQ(Scenario("invld=one hook=two log=3 keep=3"), row.out) << row.level;
        log += row.log;
        EXPECT_EQ(folder.Log(), log) << row.level;
    }
}

TEST(AssertionLog, IsCreatedEvenForASlotThatIsTaken) {
    const InFolder folder;
    DebugStore store;
    store.SetNumber("ValidateReleaseMath", 0);
    EXPECT_EQ(Scenario("keep=0"), "0\n");
    EXPECT_TRUE(std::filesystem::exists("math_assert_release.log"));
}

TEST(AssertionLog, GoesToTheStandardErrorStreamWhereItCannotBeOpened) {
    const InFolder folder;
    DebugStore store;
    store.SetNumber("ValidateReleaseMath", 2);
    std::filesystem::create_directory("math_assert_release.log");
    EXPECT_EQ(Scenario("invld=lost log=2"), "#~# lost\n2\n");
}

TEST(AssertionLog, LinesOfSeveralProcessesStayWhole) {
    const InFolder folder;
    DebugStore store;
    store.SetNumber("ValidateReleaseMath", 2);
    std::vector<std::thread> threads;
    for (const char* const letter : {"a", "b", "c", "d"}) {
        threads.emplace_back([letter] { Scenario(std::string("lines=") + letter); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::istringstream log(folder.Log());
    int count = 0;
    for (std::string line; std::getline(log, line); ++count) {
        ASSERT_EQ(line.size(), 9004U);
        EXPECT_EQ(line, "#~# " + std::string(9000, line[4]));
    }
    EXPECT_EQ(count, 400);
}

TEST(ValidateSwitch, IsLockedByTheValidLevel) {
    EXPECT_EQ(GetValidate(), 1);
    EXPECT_EQ(GetValidLevel(), 0);
    SetValidate(5);
    EXPECT_EQ(GetValidate(), 5);
    SetValidLevel(-1);
    SetValidate(1);
    EXPECT_EQ(GetValidate(), 5);
    EXPECT_EQ(GetValidLevel(), -1);
    SetValidLevel(0);
    SetValidate(1);
    EXPECT_EQ(GetValidate(), 1);
}

TEST(ValidationFlags, AreSharedByUnknownIdentifiers) {
    const std::vector<int> own = {3,   4,   12,  14,  15,  16,  23,  24,  25,  27,
                                  29,  30,  31,  32,  33,  40,  50,  103, 104, 105,
                                  112, 115, 116, 125, 127, 140, 145, 150, 151};
    const auto set = [] {
        std::vector<int> ids;
        for (int id = 0; id < 256; ++id) {
            if (CheckValidationFlag(static_cast<unsigned char>(id)) == 1) {
                ids.push_back(id);
            }
        }
        return ids;
    };
    EXPECT_TRUE(set().empty());
    for (const int id : own) {
        SetValidationFlag(static_cast<unsigned char>(id));
        EXPECT_EQ(set(), std::vector<int>{id});
        ResetValidationFlag(static_cast<unsigned char>(id));
        EXPECT_TRUE(set().empty());
    }
    SetValidationFlag(7);
    SetValidationFlag(151);
    EXPECT_EQ(set().size(), 256 - own.size() + 1);
    EXPECT_EQ(CheckValidationFlag(255), 1);
    InitAllValidationFlags();
    EXPECT_TRUE(set().empty());
}

}  // namespace
}  // namespace kvgeom::test
