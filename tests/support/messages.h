// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kernel/assertion_hook.h>

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

  private:
    static Messages& Store() {
        static Messages messages;
        return messages;
    }
    static void Record(const char* message) { Store().emplace_back(message); }

    GAssertHook m_previous;
};

inline const char* const kNullUnitVector = "GUnitVector: tried to create a NULL unit vector";

}  // namespace kvgeom::test
