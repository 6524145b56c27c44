// SPDX-License-Identifier: MIT
#pragma once

// How the operations of the table get their arguments, by the types of their parameters, and what
// they leave in them.

#include "tests/operations/operations.h"

#include <kvgeom/host/validation_flags.h>
#include <kvgeom/kernel/tolerances.h>

#include <cstdio>
#include <tuple>
#include <vector>

namespace kvgeom::test {

/// Holds an argument. What is passed by value or to be read only leaves nothing.
template <class Parameter>
class Argument {
  public:
    void Draw(Source& source) { m_value = source.Draw<Value>(); }
    Parameter Get() { return m_value; }
    void AddTo(Result& result) const {
        if constexpr (std::is_lvalue_reference_v<Parameter> &&
                      !std::is_const_v<std::remove_reference_t<Parameter>>) {
            result.Add(m_value);
        }
    }

  private:
    using Value = std::remove_cvref_t<Parameter>;
    Value m_value;
};

/// An array, of which the first elements may be written. On the heap, where a sanitizer sees its
/// end.
template <class Element>
class Argument<Element*> {
  public:
    void Draw(Source& source) {
        m_values.resize(source.IsGiven() ? source.CountGiven<Value>() : m_values.size());
        for (Value& value : m_values) {
            value = source.Draw<Value>();
        }
    }
    Element* Get() { return m_values.data(); }
    void AddTo(Result& result) const {
        if constexpr (!std::is_const_v<Element>) {
            for (const Value& value : m_values) {
                result.Add(value);
            }
        }
    }

  private:
    using Value = std::remove_const_t<Element>;
    // Six planes of four numbers, and what eight points and the planes of their fence need.
    std::vector<Value> m_values = std::vector<Value>(std::is_same_v<Value, double> ? 32 : 10);
};

template <>
class Argument<long*> {
  public:
    void Draw(Source&) { m_code = 77; }
    long* Get() { return &m_code; }
    void AddTo(Result& result) const { result.Add(m_code); }

  private:
    long m_code;
};

template <class Character>
requires(std::is_same_v<std::remove_const_t<Character>, char>) class Argument<Character*> {
  public:
    void Draw(Source&) { m_text = "a text of more than eight characters"; }
    Character* Get() { return m_text.data(); }
    void AddTo(Result& result) const { result.Add(std::string(m_text.c_str())); }

  private:
    std::string m_text;
};

/// A stream of numbers, of which some don't parse.
template <>
class Argument<std::FILE*> {
  public:
    void Draw(Source& source) {
        std::rewind(m_file);
        std::fprintf(m_file, "%d ", source.Draw<unsigned>());
        for (int i = 0; i < 40; ++i) {
            const int eighths = source.Draw<int>();
            std::fprintf(m_file, "%d.125 ", eighths);
        }
        std::fputs("x", m_file);
        std::rewind(m_file);
    }
    std::FILE* Get() { return m_file; }
    void AddTo(Result& result) const {
        const long position = std::ftell(m_file);
        result.Add(position);
        std::rewind(m_file);
        std::string text(static_cast<size_t>(position), ' ');
        result.Add(static_cast<std::uint64_t>(std::fread(text.data(), 1, text.size(), m_file)));
        // Of a NaN that was computed the sign is nobody's promise.
        for (size_t at = 0; (at = text.find("-nan", at)) != std::string::npos;) {
            text[at] = ' ';
        }
        result.Add(text);
    }

  private:
    static std::FILE* Open() {
        thread_local std::FILE* const file = std::tmpfile();
        return file;
    }
    std::FILE* m_file = Open();
};

/// Points for a record that designates an array of them. What is to be filled has room for them;
/// what is only read may have none.
template <class Reference>
class PointsArgument {
    using Record = std::remove_cvref_t<Reference>;
    static constexpr bool kIsConst = std::is_const_v<std::remove_reference_t<Reference>>;

  public:
    Record& Get() { return m_record; }
    void AddTo(Result& result) const {
        if (kIsConst && result.KeepsAll()) {
            return;
        }
        result.Add(m_record);
        for (const GPosition& p : m_points) {
            result.Add(p);
        }
    }

  protected:
    void DrawFence(Source& source, GPtFence& fence) {
        DrawPoints(source, fence.m_points, fence.m_count);
        fence.m_direction = source.Draw<GUnitVector>();
        fence.m_front = source.Draw<double>();
        fence.m_back = source.Draw<double>();
    }
    // Mostly closed.
    void DrawPoints(Source& source, GPosition*& points, unsigned long& count) {
        points = m_points.data();
        if (source.IsGiven()) {
            count = source.Draw<unsigned long>();
            m_points.resize(count);
            std::generate(m_points.begin(), m_points.end(),
                          [&source] { return source.Draw<GPosition>(); });
            return;
        }
        for (GPosition& p : m_points) {
            p = source.Draw<GPosition>();
        }
        count = source.Draw<unsigned long>();
        if (count > 0 && source.GetRandom().Next() % 8 != 0) {
            m_points[count - 1] = m_points[0];
        }
        const bool has_none = kIsConst && source.GetRandom().Next() % 16 == 0;
        points = has_none ? nullptr : points;
    }

    Record m_record;
    std::vector<GPosition> m_points = std::vector<GPosition>(8);
};

template <class Reference>
requires std::is_same_v<std::remove_cvref_t<Reference>, GPtFence>
class Argument<Reference> : public PointsArgument<Reference> {
  public:
    void Draw(Source& source) { this->DrawFence(source, this->m_record); }
};

template <class Reference>
requires std::is_same_v<std::remove_cvref_t<Reference>, GPtFrustum>
class Argument<Reference> : public PointsArgument<Reference> {
  public:
    void Draw(Source& source) {
        this->DrawFence(source, this->m_record.m_fence);
        this->m_record.m_eye = source.Draw<GPosition>();
    }
};

template <class Reference>
requires std::is_same_v<std::remove_cvref_t<Reference>, GRtPrism>
class Argument<Reference> : public PointsArgument<Reference> {
  public:
    void Draw(Source& source) {
        GRtPrism& prism = this->m_record;
        prism.m_transf = source.Draw<GTransf>();
        this->DrawPoints(source, prism.m_points, prism.m_count);
        prism.m_height = source.Draw<double>();
    }
};

/// Where the messages of a call go.
inline Result*& MessageResult() {
    thread_local Result* result = nullptr;
    return result;
}

inline void AddMessage(const char* message) {
    if (Result* const result = MessageResult()) {
        result->Add(std::string(message));
    }
}

/// The settings of the process as they are at load time, after operations that change them.
inline void ResetSettings() {
    long err;
    // Out of each other's way first: each setter looks at the values of the moment.
    SetRelativeTolerance(-1, &err);
    SetDistanceTolerance(-1, &err);
    SetFitTolerance(1e-3, &err);
    SetDistanceTolerance(1e-6, &err);
    SetRelativeTolerance(1e-10, &err);
    SetValidLevel(0);
    SetValidate(1);
    InitAllValidationFlags();
}

/// Draws the arguments and calls the function, with the messages of the call in the result.
template <class... Parameters, class Function>
void Invoke(Source& source, Result& result, Function function) {
    std::tuple<Argument<Parameters>...> arguments;
    std::apply([&source](auto&... each) { ((source.BeginArgument(), each.Draw(source)), ...); },
               arguments);
    MessageResult() = &result;
    std::apply(
        [&](auto&... each) {
            if constexpr (std::is_void_v<decltype(function(each.Get()...))>) {
                function(each.Get()...);
            } else {
                const auto returned = function(each.Get()...);
                result.Add(returned);
            }
            (each.AddTo(result), ...);
        },
        arguments);
    MessageResult() = nullptr;
}

}  // namespace kvgeom::test
