// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/records.h"

#include <cstring>
#include <tuple>

namespace kvgeom::test {

/// Arguments of every type: ordinary, extreme and special, and often related to the ones drawn
/// before: the same again, one number off by a rounding or a tolerance, the corner of a box.
class Source {
  public:
    explicit Source(Random& random) : m_random(random) {}

    /// The arguments are the numbers given, a list for each that is drawn, zeros where there are no
    /// more. Flags follow a record's numbers, a count is before them.
    Source(Random& random, const std::vector<std::vector<double>>& given)
        : m_random(random), m_given(&given), m_taken(given.size()) {}

    Random& GetRandom() { return m_random; }
    bool IsGiven() const { return m_given != nullptr; }
    /// Goes on to the next argument.
    void BeginArgument() { m_is_begun = false; }
    /// Whether each argument took all numbers of its list, and found none missing there. Zeros may
    /// stand for nothing: the last arguments, any that has an empty list, flags, whole planes.
    bool WasGivenRight() const {
        for (size_t i = 0; i < m_taken.size(); ++i) {
            if (m_taken[i] != (*m_given)[i].size()) {
                return false;
            }
        }
        return !m_lacks_numbers;
    }
    /// How many elements the next list holds; one that holds none is done with.
    template <class Value>
    size_t CountGiven() {
        const size_t numbers = m_argument < m_given->size() ? (*m_given)[m_argument].size() : 0;
        m_argument += numbers == 0 ? 1 : 0;
        return numbers / std::max<size_t>(1, sizeof(Value) / sizeof(double));
    }

    template <class Value>
    Value Draw() {
        if (IsGiven()) {
            return Given<Value>();
        }
        if constexpr (std::is_same_v<Value, double>) {
            return m_random.Number();
        } else if constexpr (std::is_same_v<Value, unsigned char>) {
            return static_cast<unsigned char>(m_random.Next());
        } else if constexpr (std::is_signed_v<Value>) {
            return static_cast<Value>(m_random.Next() % 24) - 12;
        } else if constexpr (std::is_integral_v<Value>) {
            return static_cast<Value>(m_random.Next() % 9);
        } else {
            return DrawRecord<Value>();
        }
    }

  private:
    double NextGiven(bool may_lack) {
        m_argument += m_is_begun ? 0 : 1;
        m_number = m_is_begun ? m_number + 1 : 0;
        m_is_begun = true;
        if (m_argument > m_given->size()) {
            return 0;
        }
        const std::vector<double>& list = (*m_given)[m_argument - 1];
        if (m_number >= list.size()) {
            m_lacks_numbers = m_lacks_numbers || !(list.empty() || may_lack);
            return 0;
        }
        ++m_taken[m_argument - 1];
        return list[m_number];
    }

    bool HasWholePlanes() const {
        return m_argument <= m_given->size() && (*m_given)[m_argument - 1].size() % 4 == 1;
    }

    template <class Value>
    Value Given(bool may_lack = false) {
        if constexpr (std::is_arithmetic_v<Value>) {
            return static_cast<Value>(NextGiven(may_lack));
        } else {
            Value record = {};
            if constexpr (std::is_same_v<Value, GClipVolume>) {
                record.m_count = Given<unsigned char>();
            }
            std::array<double, CountNumbers<Value>()> numbers;
            // A clip volume's count, and planes of four numbers each.
            const bool has_planes = std::is_same_v<Value, GClipVolume>;
            for (double& number : numbers) {
                number = NextGiven(has_planes && HasWholePlanes());
            }
            std::memcpy(&record, &numbers, sizeof numbers);
            if constexpr (requires { record.m_hasShear; }) {
                record.m_hasRotation = Given<unsigned char>(true);
                record.m_hasReflection = Given<unsigned char>(true);
                record.m_hasShear = Given<unsigned char>(true);
            }
            return record;
        }
    }

    template <class Record>
    Record DrawRecord() {
        Record record = Fresh<Record>();
        Record& last = std::get<Record>(m_last);
        const std::uint64_t choice = m_random.Next() % 8;
        if (choice < 2) {
            record = last;
        }
        if (choice == 3) {
            Relate(record);
        }
        if (choice == 4 && m_random.Next() % 4 == 0) {
            Specialise(record);
        }
        if (choice == 1 || choice == 2 || (choice == 3 && m_random.Next() % 2 == 0)) {
            Nudge(record);
        }
        last = record;
        return record;
    }

    template <class Record>
    Record Fresh() {
        const bool is_raw = m_random.Next() % 4 == 0;
        if constexpr (std::is_same_v<Record, GUnitVector>) {
            return is_raw ? m_random.Make<GUnitVector>() : m_random.Direction();
        } else if constexpr (std::is_same_v<Record, GUnitVector2d>) {
            const GUnitVector2d raw = Plane<GUnitVector2d>();
            return is_raw ? raw : BuildUnitVector2d(raw.m_x, raw.m_y);
        } else if constexpr (std::is_same_v<Record, GMatrix>) {
            return is_raw ? m_random.Matrix() : m_random.RotationMatrix();
        } else if constexpr (std::is_same_v<Record, GMatrix2d>) {
            const GVector2d a = Plane<GVector2d>();
            return is_raw ? BuildMatrix2d(a, Plane<GVector2d>(), 0) : Rotation2d(a.m_x, a.m_y);
        } else if constexpr (std::is_same_v<Record, GTransf>) {
            GTransf t = m_random.Similarity();
            t.m_scaling = is_raw ? m_random.Number() : t.m_scaling;
            t.m_hasShear = is_raw ? 1 : 0;
            return t;
        } else if constexpr (std::is_same_v<Record, GTransf2d>) {
            const GMatrix2d m = Fresh<GMatrix2d>();
            const GVector2d translation = Plane<GVector2d>();
            return BuildTransf2d(m, translation, m_random.Number(), 1, is_raw ? 1 : 0,
                                 is_raw ? 1 : 0);
        } else if constexpr (std::is_same_v<Record, G4x4>) {
            return is_raw                     ? m_random.Homogeneous()
                   : m_random.Next() % 2 == 0 ? m_random.Affine()
                                              : Converted(m_random.Similarity());
        } else if constexpr (std::is_same_v<Record, GBox>) {
            return is_raw ? m_random.Make6<GBox>() : m_random.Box();
        } else if constexpr (std::is_same_v<Record, GBox2d>) {
            return Fresh<GBox>().Convert2d();
        } else if constexpr (std::is_same_v<Record, GBoreLine>) {
            GBoreLine line = m_random.BoreLine();
            line.m_radius = is_raw ? m_random.Number() : line.m_radius;
            line.m_back = is_raw ? m_random.Number() : line.m_back;
            return line;
        } else if constexpr (std::is_same_v<Record, GBoreCone>) {
            const GBoreLine line = Fresh<GBoreLine>();
            return {line, m_random.Point()};
        } else if constexpr (std::is_same_v<Record, GClipVolume>) {
            GBox sides = m_random.Box();
            GClipVolume volume = {};
            ConvertGBoxToGClipVolume(&sides, &volume);
            volume.m_planes[m_random.Next() % 6][m_random.Next() % 4] += m_random.Number();
            volume.m_count = is_raw ? static_cast<unsigned char>(m_random.Next() % 9) : 6;
            return volume;
        } else if constexpr (sizeof(Record) == 2 * sizeof(double)) {
            return Plane<Record>();
        } else {
            return m_random.Make<Record>();
        }
    }

    template <class Pair>
    Pair Plane() {
        const double x = m_random.Number();
        const double y = m_random.Number();
        return {x, y};
    }

    static G4x4 Converted(const GTransf& t) {
        G4x4 a;
        a = t;
        return a;
    }

    // A record of another kind with the same numbers.
    template <class Record>
    void Relate(Record& record) const {
        if constexpr (std::is_same_v<Record, GVector>) {
            record = std::get<GUnitVector>(m_last);
        } else if constexpr (std::is_same_v<Record, GVector2d>) {
            record = std::get<GUnitVector2d>(m_last);
        } else if constexpr (std::is_same_v<Record, GPosition>) {
            record = std::get<GBox>(m_last).m_high;
        } else if constexpr (std::is_same_v<Record, GPosition2d>) {
            record = std::get<GBox2d>(m_last).m_low;
        }
    }

    // All records begin with doubles, most are nothing else.
    template <class Record>
    static constexpr size_t CountNumbers() {
        return std::is_same_v<Record, GTransf>       ? 13
               : std::is_same_v<Record, GTransf2d>   ? 7
               : std::is_same_v<Record, GClipVolume> ? 24
                                                     : sizeof(Record) / sizeof(double);
    }

    // Null records, identities, and records with the same number everywhere.
    template <class Record>
    void Specialise(Record& record) {
        constexpr std::array kEverywhere = {0.0, -0.0, 1e30, -1e30, 1.0, kNaN};
        const double number = kEverywhere[m_random.Below(kEverywhere.size())];
        for (size_t i = 0; i < CountNumbers<Record>(); ++i) {
            std::memcpy(reinterpret_cast<unsigned char*>(&record) + i * sizeof number, &number,
                        sizeof number);
        }
        if constexpr (requires { record.IsIdentity(); }) {
            if (number == 1) {
                MakeIdentity(record);
            }
        }
    }
    static void MakeIdentity(GMatrix& m) { m = kIdentity; }
    static void MakeIdentity(GMatrix2d& m) { m = {{{1, 0}, {0, 1}}}; }
    static void MakeIdentity(GTransf& t) { t = ScaleTransf(1); }
    static void MakeIdentity(GTransf2d& t) { t = ScaleTransf2d(1); }
    static void MakeIdentity(G4x4& a) { a = ScaleTransf(1); }

    template <class Record>
    void Nudge(Record& record) {
        constexpr std::array kOffsets = {1e-6, -1e-6, 1e-10, -1e-10, 2e-10, 1e-14, 1e-20, 1e30};
        const size_t at = m_random.Below(CountNumbers<Record>()) * sizeof(double);
        const size_t choice = m_random.Below(kOffsets.size() + 3);
        auto* const bytes = reinterpret_cast<unsigned char*>(&record) + at;
        double number;
        std::memcpy(&number, bytes, sizeof number);
        number = choice < kOffsets.size()        ? number + kOffsets[choice]
                 : choice == kOffsets.size()     ? Up(number)
                 : choice == kOffsets.size() + 1 ? Down(number)
                                                 : -number;
        std::memcpy(bytes, &number, sizeof number);
    }

    Random& m_random;
    const std::vector<std::vector<double>>* m_given = nullptr;
    size_t m_argument = 0;
    size_t m_number = 0;
    bool m_is_begun = false;
    // How many numbers of each list were taken.
    std::vector<size_t> m_taken;
    bool m_lacks_numbers = false;
    std::tuple<GVector, GUnitVector, GPosition, GMatrix, GTransf, G4x4, GBox, GClipVolume,
               GBoreLine, GBoreCone, GVector2d, GUnitVector2d, GPosition2d, GMatrix2d, GTransf2d,
               GBox2d>
        m_last = {};
};

}  // namespace kvgeom::test
