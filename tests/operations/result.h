// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/records.h"

#include <array>
#include <string>
#include <type_traits>
#include <vector>

namespace kvgeom::test {

/// What a call returned, wrote and reported, as a hash over the bits; NaN are all one, zeros of
/// both signs two.
class Result {
  public:
    /// Keeps the doubles, for whoever compares them otherwise, or everything.
    enum class Keeps { kHash, kDoubles, kAll };
    void Keep(Keeps what) { m_keeps = what; }
    bool KeepsAll() const { return m_keeps == Keeps::kAll; }
    const std::vector<double>& Kept() const { return m_kept; }
    const std::vector<std::string>& Texts() const { return m_texts; }
    std::uint64_t Hash() const { return m_hash; }

    void Add(const std::string& text) {
        m_texts.insert(m_texts.end(), KeepsAll() ? 1 : 0, text);
        for (const char c : text) {
            AddWord(static_cast<unsigned char>(c));
        }
    }
    template <class Value>
    void Add(const Value& value) {
        if constexpr (std::is_integral_v<Value>) {
            m_kept.insert(m_kept.end(), KeepsAll() ? 1 : 0, static_cast<double>(value));
            AddWord(static_cast<std::uint64_t>(static_cast<std::int64_t>(value)));
        } else if constexpr (std::is_same_v<Value, GClipVolume>) {
            AddNumbers(std::vector<double>(&value.m_planes[0][0], &value.m_planes[0][0] + 24));
            Add(value.m_count);
        } else if constexpr (std::is_same_v<Value, GPtFence>) {
            Add(value.m_count);
            Add(value.m_direction);
            Add(std::array{value.m_front, value.m_back});
        } else if constexpr (std::is_same_v<Value, GPtFrustum>) {
            Add(value.m_fence);
            Add(value.m_eye);
        } else if constexpr (std::is_same_v<Value, GRtPrism>) {
            Add(value.m_count);
            Add(value.m_transf);
            Add(value.m_height);
        } else {
            AddNumbers(Numbers(value));
        }
    }

  private:
    void AddWord(std::uint64_t word) {
        m_hash = (m_hash ^ word) * 0x9E3779B97F4A7C15U;
        m_hash ^= m_hash >> 32U;
    }
    void AddNumbers(const std::vector<double>& numbers) {
        if (m_keeps != Keeps::kHash) {
            m_kept.insert(m_kept.end(), numbers.begin(), numbers.end());
            return;
        }
        for (const double x : numbers) {
            AddWord(std::bit_cast<std::uint64_t>(std::isnan(x) ? kNaN : x));
        }
    }

    std::uint64_t m_hash = 0;
    Keeps m_keeps = Keeps::kHash;
    std::vector<double> m_kept;
    std::vector<std::string> m_texts;
};

}  // namespace kvgeom::test
