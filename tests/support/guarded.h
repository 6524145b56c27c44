// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <vector>

#if !defined(_WIN32)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace kvgeom::test {

/// Copies of elements right before a page that ends the process when it is touched, or right after
/// one, or a double before it, where no vector is aligned. (On Windows, among others.) Their
/// address is a multiple of 8, for most counts of no more.
template <class Element>
class Guarded {
  public:
    enum class Place { kBeforeGuard, kAfterGuard, kNearGuard };

    Guarded(const std::vector<Element>& elements, Place place) : m_count(elements.size()) {
        const std::size_t size = m_count * sizeof(Element);
#if defined(_WIN32)
        static_cast<void>(place);
        m_room.resize(size / sizeof(double) + 1);
        m_elements = reinterpret_cast<Element*>(m_room.data());
#else
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t odd = place == Place::kNearGuard ? sizeof(double) : 0;
        const std::size_t pages = (size + odd + page - 1) / page * page;
        m_size = pages + 2 * page;
        m_memory = static_cast<char*>(
            mmap(nullptr, m_size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        if (m_memory == MAP_FAILED ||
            (pages != 0 && mprotect(m_memory + page, pages, PROT_READ | PROT_WRITE) != 0)) {
            throw std::runtime_error("no memory between guards");
        }
        char* const begin =
            m_memory + page + (place == Place::kAfterGuard ? 0 : pages - size - odd);
        m_elements = reinterpret_cast<Element*>(begin);
#endif
        if (size != 0) {
            std::memcpy(m_elements, elements.data(), size);
        }
    }
    ~Guarded() {
#if !defined(_WIN32)
        munmap(m_memory, m_size);
#endif
    }
    Guarded(const Guarded&) = delete;
    Guarded& operator=(const Guarded&) = delete;

    Element* Get() {
        return m_elements;
    }
    std::vector<Element> Copy() const {
        return {m_elements, m_elements + m_count};
    }

  private:
    std::size_t m_count;
    Element* m_elements;
#if defined(_WIN32)
    std::vector<double> m_room;
#else
    char* m_memory;
    std::size_t m_size;
#endif
};

}  // namespace kvgeom::test
