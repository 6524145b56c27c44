// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/records.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace kvgeom::test {

using Messages = std::vector<std::string>;

/// Records the messages that are passed while it lives, in order. One at a time.
class MessageRecorder {
  public:
    MessageRecorder() : m_previous(SetAssertHook(&Record)) { Store().clear(); }
    ~MessageRecorder() { SetAssertHook(m_previous); }
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;

    /// The messages since the last call.
    Messages Take() { return std::exchange(Store(), {}); }

    /// That the result, a record or a single number, consists of these numbers, and that these
    /// messages, if any, were passed since the last call.
    template <class Result>
    void Expect(const Result& got, const std::vector<double>& numbers,
                const Messages& messages = {}, int line = __builtin_LINE()) {
        EXPECT_EQ(Numbers(got), numbers) << "line " << line;
        EXPECT_EQ(Take(), messages) << "line " << line;
    }

  private:
    static Messages& Store() {
        static Messages messages;
        return messages;
    }
    static void Record(const char* message) { Store().emplace_back(message); }

    GAssertHook m_previous;
};

inline const char* const kNullUnitVector = "GUnitVector: tried to create a NULL unit vector";
inline const char* const kNullUnitVector2d = "GUnitVector2d: tried to create a NULL unit vector";

}  // namespace kvgeom::test
