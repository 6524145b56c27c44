// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <limits>
#include <new>

namespace kvgeom::detail {

// Uninitialised memory for the records of one call: within the object up to a fixed count, on the
// heap beyond that.
template <class Record, std::size_t fixed_count>
class Scratch {
  public:
    explicit Scratch(std::size_t count) {
        if (count <= fixed_count) {
            m_records = m_fixed;
        } else if (count <= std::numeric_limits<std::ptrdiff_t>::max() / sizeof(Record)) {
            m_heap = new (std::nothrow) Record[count];
            m_records = m_heap;
        }
    }
    ~Scratch() { delete[] m_heap; }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    /// Null when the heap refused.
    Record* Get() { return m_records; }

  private:
    Record m_fixed[fixed_count];
    Record* m_heap = nullptr;
    Record* m_records = nullptr;
};

}  // namespace kvgeom::detail
