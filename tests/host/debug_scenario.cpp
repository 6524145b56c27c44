// SPDX-License-Identifier: MIT

// Does in one process what its arguments say and prints the results, a line each: the switches are
// read once in a process, so every case of a test wants one of its own.

#include <kvgeom/kvgeom.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <string>

#if defined(__unix__)
#include <sys/resource.h>
#include <unistd.h>
#include <csignal>
#endif

namespace {

// What follows the first comma.
int NumberAfterComma(const std::string& text) {
    return std::atoi(text.c_str() + text.find(',') + 1);
}

std::string BeforeComma(const std::string& text) {
    return text.substr(0, text.find(','));
}

void Print(int result) {
    std::printf("%d\n", result);
}

// Asks for the log, writes to it when it is handed over, and says so.
void AskForLog(int min_level, std::FILE* slot) {
    std::FILE* stream = slot;
    Print(MathDebugOutputFilePtr(&stream, min_level));
    if (stream != slot) {
        char message[] = "handed over";
        invld(stream, message, 0);
        std::fclose(stream);
        std::puts("handed over");
    }
}

void WriteManyLines(const std::string& letter) {
    std::string message(9000, letter[0]);
    for (int i = 0; i < 100; ++i) {
        invld(nullptr, message.data(), 0);
    }
}

#if defined(__unix__)
void BecomeNobody() {
    constexpr unsigned kNobody = 65534;
    if (getuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) {
        std::abort();
    }
}

// Every write beyond so many bytes of a file fails, as on a full disk.
void LimitFiles(int bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {static_cast<rlim_t>(bytes), static_cast<rlim_t>(bytes)};
    setrlimit(RLIMIT_FSIZE, &limit);
}
#endif

const std::map<std::string, std::function<void(std::string)>> kCommands = {
    {"level", [](const std::string&) { Print(CheckRegistryForMathValidateLevel()); }},
    {"setlevel", [](const std::string& n) { SetMathValidateLevel(std::atoi(n.c_str())); }},
    {"boundary", [](const std::string&) { Print(CheckRegistryForGeom3dBoundary()); }},
    {"selfxo", [](const std::string&) { Print(CheckRegistryBoundarySelfXO()); }},
    {"surfaces", [](const std::string&) { Print(CheckRegistryValidateAllGTSrfBnd()); }},
    {"coremath", [](const std::string&) { Print(CheckRegistryValidateCoreMath()); }},
    {"reset", [](const std::string&) { ResetRegistryValidationMathFlag(); }},
    {"entry",
     [](const std::string& text) {
         std::string name = BeforeComma(text);
         Print(CheckDebugRegEntryCoreMath(name.data(), NumberAfterComma(text)));
     }},
    {"invld", [](std::string message) { invld(nullptr, message.data(), 7); }},
    {"print", [](std::string message) { invld(stdout, message.data(), 7); }},
    {"hook",
     [](const std::string& message) {
         SetAssertHook(LogAssertMessage);
         Gassert_debug(message.c_str());
     }},
    {"log", [](const std::string& level) { AskForLog(std::atoi(level.c_str()), nullptr); }},
    {"keep", [](const std::string& level) { AskForLog(std::atoi(level.c_str()), stdout); }},
    {"lines", WriteManyLines},
    {"remove", [](const std::string& path) { std::remove(path.c_str()); }},
#if defined(__unix__)
    {"nobody", [](const std::string&) { BecomeNobody(); }},
    {"limit", [](const std::string& bytes) { LimitFiles(std::atoi(bytes.c_str())); }},
#endif
};

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const size_t equals = argument.find('=');
        const std::string value = equals < argument.size() ? argument.substr(equals + 1) : "";
        kCommands.at(argument.substr(0, equals))(value);
        std::fflush(stdout);
    }
}
