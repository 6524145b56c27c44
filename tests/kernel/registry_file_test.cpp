// SPDX-License-Identifier: MIT

// The file that stands for the registry where there is none: what counts as one, and that it
// survives whatever happens while it is written.

#include "tests/kernel/debug_store.h"

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <thread>

namespace kvgeom::test {
namespace {

const std::string kHead = DebugStore::Header() + DebugStore::Section();
const std::string kSkip = "\"SkipCheckGeom3dBoundaries\"=dword:00000001\n";

TEST(RegistryFile, IsReadAsTheRegistryEditorWritesIt) {
    const struct {
        const char* what;
        std::string content;
        bool is_found;
    } rows[] = {
        {"plain", kHead + kSkip, true},
        {"no case",
         DebugStore::Header() + "[hkey_local_machine\\software\\KESTRINE\\veltor\\core\\debug]\n"
                                "\"skipcheckGEOM3DboundarieS\"=DWORD:1\n",
         true},
        {"mark and returns",
         "\xEF\xBB\xBFWindows Registry Editor Version 5.00\r\n\r\n; comment \x01\xff\r\n" +
             DebugStore::Section() + "\"SkipCheckGeom3dBoundaries\"=dword:00000001\r\n",
         true},
        {"blanks", kHead + "  \"SkipCheckGeom3dBoundaries\"  = dword: 1 \t\n", true},
        {"bytes", kHead + "\"SkipCheckGeom3dBoundaries\"=hex:01,ff\n", true},
        {"typed bytes", kHead + "\"SkipCheckGeom3dBoundaries\"=hex(4):01,00,00,00\n", true},
        {"bytes in lines", kHead + "\"SkipCheckGeom3dBoundaries\"=hex:\\\n  01,\\\n  02\n", true},
        {"five bytes", kHead + "\"SkipCheckGeom3dBoundaries\"=hex:01,\\\n02,03,04,05\n", false},
        {"no bytes", kHead + "\"SkipCheckGeom3dBoundaries\"=hex:\n", false},
        {"text", kHead + "\"SkipCheckGeom3dBoundaries\"=\"\x01\"\n", true},
        {"escaped",
         kHead + "\"a\\\"=\"=\"]\\\\\"\n@=\"default\"\n\"Skip\\CheckGeom3dBoundaries\"=dword:1\n",
         true},
        {"the last counts", kHead + "\"SkipCheckGeom3dBoundaries\"=dword:2\n" + kSkip, true},
        {"also the last section",
         kHead + "\"SkipCheckGeom3dBoundaries\"=dword:2\n[Other]\n\"x\"=\"\"\n" +
             DebugStore::Section() + kSkip,
         true},
        {"no line end", kHead + "\"SkipCheckGeom3dBoundaries\"=dword:00000001", true},
        {"another section", DebugStore::Header() + "[HKEY_LOCAL_MACHINE\\SOFTWARE]\n" + kSkip,
         false},
        {"a longer name", kHead + "\"SkipCheckGeom3dBoundaries2\"=dword:1\n", false},
        {"a shorter name", kHead + "\"SkipCheckGeom3dBoundarie\"=dword:1\n", false},
        // What follows can't be parsed.
        {"nothing", "", false},
        {"no header", DebugStore::Section() + kSkip, false},
        {"another header", "REGEDIT4\n" + DebugStore::Section() + kSkip, false},
        {"a word", kHead + kSkip + "word\n", false},
        {"garbage", kHead + kSkip + std::string("\x00\xff\x1b\n", 4), false},
        {"open section", kHead + kSkip + "[Other\n", false},
        {"no section", DebugStore::Header() + "\"x\"=dword:1\n" + DebugStore::Section() + kSkip,
         false},
        {"no name", kHead + kSkip + "=dword:1\n", false},
        {"open name", kHead + kSkip + "\"x=dword:1\n", false},
        {"no data", kHead + kSkip + "\"x\"=\n", false},
        {"removal", kHead + kSkip + "\"x\"=-\n", false},
        {"no digits", kHead + kSkip + "\"x\"=dword:\n", false},
        {"nine digits", kHead + kSkip + "\"x\"=dword:000000001\n", false},
        {"not hex", kHead + kSkip + "\"x\"=dword:12g\n", false},
        {"half a byte", kHead + kSkip + "\"x\"=hex:01,2\n", false},
        {"no byte", kHead + kSkip + "\"x\"=hex:01,,02\n", false},
        {"no last byte", kHead + kSkip + "\"x\"=hex:01,\n", false},
        {"no type", kHead + kSkip + "\"x\"=hex():01\n", false},
        {"open text", kHead + kSkip + "\"x\"=\"text\\\"\n", false},
        {"words behind", kHead + kSkip + "\"x\"=\"text\" more\n", false},
    };
    for (const auto& row : rows) {
        const DebugStore store;
        store.SetContent(row.content);
        EXPECT_EQ(Scenario("boundary"), row.is_found ? "0\n" : "1\n") << row.what;
    }
}

TEST(RegistryFile, CutAnywhereGivesNoWrongNumber) {
    const std::string content =
        kHead + "\"MathValidateLevel\"=hex:12,\\\n  01,02\n\"ValidateReleaseMath\"=dword:12345678";
    for (size_t length = 0; length <= content.size(); ++length) {
        const DebugStore store;
        store.SetContent(content.substr(0, length));
        const std::string level = Scenario("level");
        EXPECT_TRUE(level == "0\n" || level == "18\n") << length << ": " << level;
    }
    const DebugStore store;
    for (size_t length = content.size() - 8; length < content.size(); ++length) {
        store.SetContent(content.substr(0, length));
        EXPECT_EQ(Scenario("entry=ValidateReleaseMath,3"), "0\n") << "not to be written either";
        EXPECT_EQ(store.Content(), content.substr(0, length));
    }
}

TEST(RegistryFile, KeepsAllThatItHeld) {
    const std::string value = "\"New\"=dword:00000007\n";
    const std::string before =
        DebugStore::Header() + "; a comment\n[Other]\n\"x\"=hex:01,\\\n 02\n";
    const std::string old_value = "\"old\"=\"text\"\n";
    const std::string after = "\n; the end\n[More]\n@=\"y\"\n";
    const std::string long_value = "\"nEW\"=hex:01,02,03,\\\n  04,05\n";
    const struct {
        std::string content;
        std::string expected;
    } rows[] = {
        {before, before + "\n" + DebugStore::Section() + value},
        {before + DebugStore::Section() + old_value + after,
         before + DebugStore::Section() + old_value + value + after},
        {before + DebugStore::Section() + long_value + old_value + after,
         before + DebugStore::Section() + value + old_value + after},
        {kHead + "\"old\"=\"text\"", kHead + "\"old\"=\"text\"\n" + value},
        {"Windows Registry Editor Version 5.00\r\n",
         "Windows Registry Editor Version 5.00\r\n\r\n"
         "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Kestrine\\Veltor\\Core\\Debug]\r\n"
         "\"New\"=dword:00000007\r\n"},
    };
    for (const auto& row : rows) {
        const DebugStore store;
        store.SetContent(row.content);
        EXPECT_EQ(Scenario("entry=New,7"), "7\n");
        EXPECT_EQ(store.Content(), row.expected);
        EXPECT_EQ(Scenario("entry=New,8"), "7\n");
        EXPECT_EQ(store.Content(), row.expected);
    }
}

TEST(RegistryFile, TakesNoNameThatWouldSpoilIt) {
    const DebugStore store;
    store.SetContent(kHead);
    EXPECT_EQ(Scenario("'entry=two\nlines,7'"), "7\n");
    EXPECT_EQ(store.Content(), kHead);
    EXPECT_EQ(Scenario("entry=,7"), "7\n");
    EXPECT_EQ(store.Content(), kHead + "@=dword:00000007\n");
    EXPECT_EQ(Scenario("entry=,8"), "7\n");
}

TEST(RegistryFile, KeepsItsRightsAndTheLinkThatLeadsToIt) {
    const DebugStore store;
    const ScratchFolder elsewhere;
    const std::string target = elsewhere.Write("target.reg", kHead);
    chmod(target.c_str(), 0640);
    std::filesystem::create_symlink(target, store.Path());
    EXPECT_EQ(Scenario("entry=New,7"), "7\n");
    EXPECT_TRUE(std::filesystem::is_symlink(store.Path()));
    EXPECT_EQ(ReadFile(target), kHead + "\"New\"=dword:00000007\n");
    struct stat status;
    ASSERT_EQ(stat(target.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST(RegistryFile, IsMadeWithItsFolder) {
    const ScratchFolder folder;
    const std::string path = folder.Path("a/b/registry.reg");
    setenv("KVGEOM_REGISTRY", path.c_str(), 1);
    EXPECT_EQ(Scenario("boundary"), "1\n");
    EXPECT_FALSE(std::filesystem::exists(folder.Path("a"))) << "reading makes nothing";
    EXPECT_EQ(Scenario("entry=New,7"), "7\n");
    EXPECT_EQ(ReadFile(path), kHead + "\"New\"=dword:00000007\n");
    setenv("KVGEOM_REGISTRY", "/dev/null/registry.reg", 1);
    EXPECT_EQ(Scenario("boundary entry=New,7"), "1\n0\n");
}

// Even where the value exists.
TEST(RegistryFile, WithoutRightsIsReadButNotOpenedToCreate) {
    const auto run = [](mode_t file, mode_t folder) {
        const DebugStore store;
        store.SetContent(kHead + kSkip);
        const std::string parent = std::filesystem::path(store.Path()).parent_path();
        chmod(store.Path().c_str(), file);
        chmod(parent.c_str(), folder);
        const std::string result = Scenario("nobody boundary entry=SkipCheckGeom3dBoundaries,5");
        chmod(parent.c_str(), 0700);
        return result;
    };
    EXPECT_EQ(run(0666, 0777), "0\n1\n");
    EXPECT_EQ(run(0444, 0777), "0\n0\n");
    EXPECT_EQ(run(0666, 0555), "0\n0\n");
    EXPECT_EQ(run(0000, 0777), "1\n0\n");
}

TEST(RegistryFile, IsNoPipeNoFolderAndNoDevice) {
    const DebugStore store;
    ASSERT_EQ(mkfifo(store.Path().c_str(), 0600), 0);
    EXPECT_EQ(Scenario("boundary entry=New,7"), "1\n0\n");
    for (const char* const path : {"/", "/dev/zero"}) {
        setenv("KVGEOM_REGISTRY", path, 1);
        EXPECT_EQ(Scenario("boundary"), "1\n") << path;
    }
}

TEST(RegistryFile, MayBeHuge) {
    const DebugStore store;
    std::string content = kHead;
    const std::string line = "\"filler\"=hex:01,02,03,04,05,06,07,08,09,0a,0b,0c,0d,0e,0f,10,11\n";
    while (content.size() < 100'000'000) {
        content += line;
    }
    store.SetContent(content + kSkip);
    EXPECT_EQ(Scenario("boundary"), "0\n");
    EXPECT_EQ(Scenario("entry=New,7"), "7\n");
    EXPECT_EQ(store.Number("New"), 7U);
}

TEST(RegistryFile, StaysAsItIsOnAFullDisk) {
    const DebugStore store;
    store.SetContent(kHead + kSkip);
    EXPECT_EQ(Scenario("limit=100 entry=New,7 boundary"), "7\n0\n");
    EXPECT_EQ(store.Content(), kHead + kSkip);
    EXPECT_FALSE(std::filesystem::exists(store.Path() + ".new"));
}

TEST(RegistryFile, TakesTheValuesOfProcessesThatWriteAtOnce) {
    constexpr int kProcesses = 12;
    const DebugStore store;
    std::vector<std::thread> threads;
    for (int i = 0; i < kProcesses; ++i) {
        threads.emplace_back([i] {
            const std::string number = std::to_string(i);
            EXPECT_EQ(Scenario("entry=Value" + number + "," + number), number + "\n");
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (unsigned i = 0; i < kProcesses; ++i) {
        EXPECT_EQ(store.Number(("Value" + std::to_string(i)).c_str()), i);
    }
}

TEST(RegistryFile, IsNotWaitedForWhenAnotherHangsWithTheLock) {
    const DebugStore store;
    store.SetContent(kHead);
    const int lock = open((store.Path() + ".lock").c_str(), O_RDONLY | O_CREAT, 0600);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    EXPECT_EQ(Scenario("entry=New,7"), "0\n");
    EXPECT_EQ(store.Content(), kHead);
    close(lock);
    EXPECT_EQ(Scenario("entry=New,7"), "7\n");
}

// Whichever call is the last of a process, or fails.
TEST(RegistryFile, IsTheOldOrTheNewOneWholeAfterAnyFault) {
    constexpr int kCalls = 30;  // more than there are
    const std::string before = kHead + kSkip;
    const std::string after = before + "\"New\"=dword:00000007\n";
    int kept = 0;
    for (const std::string fault : {"kill:", "fail:"}) {
        for (int call = 1; call <= kCalls; ++call) {
            const DebugStore store;
            store.SetContent(before);
            setenv("KVGEOM_TEST_FAULT", (fault + std::to_string(call)).c_str(), 1);
            const std::string result = Scenario("entry=New,7", DEBUG_SCENARIO_FAULTS);
            const std::string content = store.Content();
            EXPECT_TRUE(content == before || content == after) << fault << call << content;
            kept += content == before ? 1 : 0;
            if (fault == "fail:" || call == kCalls) {
                EXPECT_TRUE(result == "7\n" || result == "0\n") << result;
            } else if (call == 1) {
                EXPECT_NE(result.find("failed"), std::string::npos) << "not killed";
            }
            EXPECT_EQ(Scenario("entry=New,7"), "7\n") << "and all is well for the next one";
            EXPECT_EQ(store.Content(), after);
        }
    }
    EXPECT_GT(kept, 20);
}

}  // namespace
}  // namespace kvgeom::test
