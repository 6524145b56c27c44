// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"
#include "tests/support/tolerance_guard.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace kvgeom::test {
namespace {

TEST(Tolerances, HaveTheirDefaultsAtLoad) {
    EXPECT_EQ(GetDistanceTolerance(), 1e-6);
    EXPECT_EQ(GetRelativeTolerance(), 1e-10);
    EXPECT_EQ(GetFitTolerance(), 1e-3);
    EXPECT_EQ(GetPosDblAlgn(), 1);
}

TEST(Tolerances, KeepTheirOrderAndRefuseWhatBreaksIt) {
    const char* const above_fit =
        "SetDistanceTolerance: distance tolerance not smaller than resfit.";
    const char* const below_relative =
        "SetDistanceTolerance: distance tolerance not larger than releative tolerance";
    const char* const above_distance =
        "SetRelativeTolerance: relative tolerance not smaller than distance tolerance";
    const char* const below_distance =
        "SetFitTolerance: fit tolerance is smaller than distance tolerance.";
    struct Setting {
        void (*set)(double, long*);
        decltype(&GetDistanceTolerance) get;
        double initial;
    };
    const Setting distance = {SetDistanceTolerance, GetDistanceTolerance, 1e-6};
    const Setting relative = {SetRelativeTolerance, GetRelativeTolerance, 1e-10};
    const Setting fit = {SetFitTolerance, GetFitTolerance, 1e-3};
    const struct {
        Setting setting;
        double value;
        const char* message;  // null: accepted
    } rows[] = {
        {distance, 1e-3, nullptr},
        {distance, Up(1e-3), above_fit},
        {distance, 1e-10, nullptr},
        {distance, Down(1e-10), below_relative},
        {distance, kNaN, above_fit},
        {distance, kInf, above_fit},
        {distance, -kInf, below_relative},
        {relative, 1e-6, nullptr},
        {relative, Up(1e-6), above_distance},
        {relative, 0.0, nullptr},
        {relative, -1.0, nullptr},
        {relative, kNaN, above_distance},
        {fit, 1e-6, nullptr},
        {fit, Down(1e-6), below_distance},
        {fit, kInf, nullptr},
        {fit, kNaN, below_distance},
    };
    MessageRecorder recorder;
    for (const auto& row : rows) {
        const ToleranceGuard guard;
        long err = 77;
        row.setting.set(row.value, &err);
        const bool accepted = row.message == nullptr;
        EXPECT_EQ(err, accepted ? 0 : 2) << row.value;
        EXPECT_EQ(recorder.Take(), accepted ? Messages{} : Messages{row.message}) << row.value;
        EXPECT_EQ(row.setting.get(), accepted ? row.value : row.setting.initial);
    }
}

TEST(Tolerances, AreReadAtEachCall) {
    const ToleranceGuard guard;
    const GPosition p = {0, 0, 0};
    const GPosition q = {5e-4, 0, 0};
    const GBoreLine null = BuildBoreLine(p, kX);
    EXPECT_EQ(p.IsEqual(q), 0);
    EXPECT_EQ(Numbers(null), (std::vector<double>{0, 0, 0, 1, 0, 0, kBig, -kBig, 1e-6}));
    EXPECT_EQ(null.IsNull(), 1);
    long err;
    SetDistanceTolerance(1e-3, &err);
    EXPECT_EQ(p.IsEqual(q), 1);
    SetDistanceTolerance(1e-7, &err);
    EXPECT_EQ(null.IsNull(), 0);
}

TEST(AssertionHook, IsReturnedWhenReplacedAndSilentWhenNull) {
    EXPECT_EQ(SetAssertHook(nullptr), nullptr);
    Gassert_debug("nobody listens");
    static std::string heard;
    heard.clear();
    const GAssertHook hook = [](const char* message) { heard += message; };
    SetAssertHook(hook);
    Gassert_debug("%s is passed as it is");
    EXPECT_EQ(heard, "%s is passed as it is");
    EXPECT_EQ(SetAssertHook(nullptr), hook);
}

TEST(KVRoundValue, PrintsWholeNumbersOrNothing) {
    const struct {
        double value;
        int digits;
        unsigned int size;
        const char* expected;
    } rows[] = {
        {3.14159, 2, 16, "3.14"}, {3.14159, 2, 5, "3.14"},     {3.14159, 2, 4, ""},
        {3.14159, 2, 1, ""},      {3.14159, 10, 16, ""},       {1234.5, -2, 16, ""},
        {-0.25, 0, 16, "0"},      {1.5, 9, 16, "1.500000000"}, {kInf, 1, 16, "inf"},
        {-0.0, 1, 16, "0.0"},
    };
    for (const auto& row : rows) {
        std::string text(17, '#');
        double rounded;
        KVRoundValue(row.value, row.digits, &rounded, row.size, text.data());
        EXPECT_STREQ(text.c_str(), row.expected) << row.value << ", " << row.digits;
        EXPECT_EQ(text.find_first_not_of('#', std::strlen(row.expected) + 1), std::string::npos)
            << "written beyond the terminator";
    }
    std::string longest(400, '#');
    double rounded;
    KVRoundValue(2.5, 0, &rounded, 400, nullptr);
    EXPECT_EQ(rounded, 3);
    KVRoundValue(-DBL_MAX, 9, &rounded, 400, longest.data());
    EXPECT_EQ(std::strlen(longest.c_str()), 1U + 309U + 1U + 9U);
}

}  // namespace
}  // namespace kvgeom::test
