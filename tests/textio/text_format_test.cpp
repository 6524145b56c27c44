// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <cstdio>
#include <string>

#ifndef _WIN32
#include <locale.h>
#endif

namespace kvgeom::test {
namespace {

// A temporary stream that holds the text, at its start.
class Stream {
  public:
    explicit Stream(const std::string& text = "") {
        std::fwrite(text.data(), 1, text.size(), m_file);
        std::rewind(m_file);
    }
    ~Stream() { std::fclose(m_file); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    std::FILE* File() { return m_file; }
    std::string Rest() {
        std::string rest;
        for (int c = std::fgetc(m_file); c != EOF; c = std::fgetc(m_file)) {
            rest += static_cast<char>(c);
        }
        return rest;
    }

  private:
    std::FILE* m_file = std::tmpfile();
};

template <class Record>
std::string Written(const Record& record, long expected_err = 0) {
    Stream stream;
    long err = 77;
    GPrint_to_File(stream.File(), record, &err);
    EXPECT_EQ(err, expected_err);
    std::rewind(stream.File());
    return stream.Rest();
}

// Reads the record from the text and gives what is left of that.
template <class Record>
std::string RestAfterReading(Record& record, const std::string& text, long expected_err = 0) {
    Stream stream(text);
    long err = 77;
    GRead_from_File(stream.File(), record, &err);
    EXPECT_EQ(err, expected_err) << text;
    return stream.Rest();
}

// The text with the numbers put in by printf: "%20.15le" for each #, "%15.15lf" for each ~.
std::string Filled(const std::string& text, const std::vector<double>& numbers) {
    std::string result;
    auto next = numbers.begin();
    for (const char c : text) {
        char number[400] = {c};
        if (c == '#' || c == '~') {
            std::snprintf(number, sizeof number, c == '#' ? "%20.15le" : "%15.15lf", *next++);
        }
        result += number;
    }
    EXPECT_TRUE(next == numbers.end());
    return result;
}

// 1.25, 2.25, ... and the same as text.
std::vector<double> Series(int count) {
    std::vector<double> numbers;
    for (int i = 1; i <= count; ++i) {
        numbers.push_back(i + 0.25);
    }
    return numbers;
}
std::string SeriesText(int count) {
    std::string text;
    for (int i = 1; i <= count; ++i) {
        text += (i % 3 == 0 ? "\r\n\t" : " ") + std::to_string(i) + ".25";
    }
    return text;
}

template <class Record>
Record FromNumbers(const std::vector<double>& numbers) {
    Record record;
    EXPECT_EQ(sizeof record, numbers.size() * sizeof(double));
    std::memcpy(&record, numbers.data(), sizeof record);
    return record;
}
template <class Record>
Record FromSeries() {
    return FromNumbers<Record>(Series(sizeof(Record) / sizeof(double)));
}

// The lines of the records that are parts of others.
const std::string kBoreLineText =
    "GBoreLine:\n point: # # #\n direction: # # #\n front:  #\n back:   #\n radius: ~\n";
const std::string kMatrixText = "GMatrix (in rows):\n # # #\n # # #\n # # #\n";
const std::string kMatrix2dText = "GMatrix2d (in rows):\n # #\n # #\n";
const std::string kTransfText = "GTransf:\n" + kMatrixText +
                                " translation: # # #\n scaling: #\n hasRot: 1\n hasRef: 0\n"
                                " hasShe: 255\n";
const std::string k4x4Text =
    "#\n#\n#\n\n#\n#\n#\n\n#\n#\n#\n\n#\n#\n#\n\n #\n #\n #\n #\n"
    "G4x4: Rotation, Translation, extras\nRotation: 0 1 2, 4 5 6, 8 9 10\n"
    "Translation: 12 13 14\nExtras(perspective): 3 7 11 15\n";
constexpr unsigned k4x4Order[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 3, 7, 11, 15};

// The homogeneous matrix whose elements, in the order of the text, are the series.
G4x4 HomogeneousSeries() {
    G4x4 a;
    for (unsigned i = 0; i < 16; ++i) {
        a.m_matrix[k4x4Order[i]] = i + 1.25;
    }
    return a;
}

GTransf TransfSeries() {
    return {FromSeries<GMatrix>(), {10.25, 11.25, 12.25}, 13.25, 1, 0, 255};
}

TEST(TextFormat, WritesRecordsWithoutPoints) {
    EXPECT_EQ(Written(FromSeries<GBoreLine>()), Filled(kBoreLineText, Series(9)));
    EXPECT_EQ(Written(FromSeries<GBoreCone>()),
              Filled("GBoreCone:\n" + kBoreLineText + " eye point: # # #\n", Series(12)));
    EXPECT_EQ(Written(FromSeries<GMatrix>()), Filled(kMatrixText, Series(9)));
    EXPECT_EQ(Written(HomogeneousSeries()), Filled(k4x4Text, Series(16)));
    EXPECT_EQ(Written(FromSeries<GBox>()),
              Filled("GBox:\n low:  # # #\n high: # # #\n", Series(6)));
    EXPECT_EQ(Written(TransfSeries()), Filled(kTransfText, Series(13)));
    EXPECT_EQ(Written(FromSeries<GMatrix2d>()), Filled(kMatrix2dText, Series(4)));
    EXPECT_EQ(Written(FromSeries<GBox2d>()),
              Filled("GBox2d:\n low:  # #\n high: # #\n", Series(4)));
    const GTransf2d planar = {FromSeries<GMatrix2d>(), {5.25, 6.25}, 7.25, 0, 1, 2};
    EXPECT_EQ(Written(planar), Filled("GTransf2d:\n" + kMatrix2dText +
                                          " translation: # #\n scaling: #\n hasRot: 0\n"
                                          " hasRef: 1\n hasShe: 2\n",
                                      Series(7)));
}

TEST(TextFormat, WritesAnyNumberOfPoints) {
    for (const int count : {0, 1, 5, 150}) {
        std::vector<GPosition> points;
        std::string lines = " number of points: " + std::to_string(count) + "\n";
        for (int i = 0; i < count; ++i) {
            points.push_back({3 * i + 1.25, 3 * i + 2.25, 3 * i + 3.25});
            lines += " [" + std::to_string(i) + "] # # #\n";
        }
        points.push_back({});  // so that no array is null
        const auto n = static_cast<unsigned long>(count);
        const double s = 3 * count + 0.25;  // the series goes on with s + 1
        const GPtFence fence = {n, points.data(), {s + 1, s + 2, s + 3}, s + 4, s + 5};
        const std::string text =
            "GPtFence:\n" + lines + " direction: # # #\n front: #\n back:  #\n";
        EXPECT_EQ(Written(fence), Filled(text, Series(3 * count + 5)));
        EXPECT_EQ(Written(GPtFrustum{fence, {s + 6, s + 7, s + 8}}),
                  Filled("GPtFrustum:\n" + text + " eye point: # # #\n", Series(3 * count + 8)));
        std::vector<double> numbers = Series(13);
        for (const double x : Series(3 * count + 1)) {
            numbers.push_back(x);
        }
        EXPECT_EQ(Written(GRtPrism{TransfSeries(), points.data(), n, s + 1}),
                  Filled("GRtPrism:\n" + kTransfText + lines + " height: #\n", numbers));
    }
}

TEST(TextFormat, WritesNumbersAsPrintfDoes) {
    const struct {
        double value;
        const char* scientific;
        const char* fixed;
    } rows[] = {{0.5, "5.000000000000000e-01", "0.500000000000000"},
                {-0.0, "-0.000000000000000e+00", "-0.000000000000000"},
                {0.1 + 0.2, "3.000000000000000e-01", "0.300000000000000"},
                {-123.456, "-1.234560000000000e+02", "-123.456000000000003"},
                {4.9e-324, "4.940656458412465e-324", "0.000000000000000"},
                {kInf, "                 inf", "            inf"},
                {-kInf, "                -inf", "           -inf"},
                {kNaN, "                 nan", "            nan"},
                {-kNaN, "                -nan", "           -nan"}};
    for (const auto& row : rows) {
        const double x = row.value;
        const GBox2d box = {{x, 1}, {1, x}};
        const std::string number = row.scientific;
        EXPECT_EQ(Written(box),
                  Filled("GBox2d:\n low:  " + number + " #\n high: # " + number + "\n", {1, 1}));
        GBoreLine line = FromSeries<GBoreLine>();
        line.m_radius = x;
        const std::string text = Written(line);
        EXPECT_EQ(text.substr(text.find(" radius")), " radius: " + std::string(row.fixed) + "\n");
    }

    std::vector<double> values = {DBL_MAX, -DBL_MAX, DBL_MIN, -4.9e-324, kInf, -kInf, kNaN};
#ifndef _WIN32
    values.push_back(-kNaN);  // whose sign not every printf writes there
#endif
    // Halfway between two numbers of sixteen digits, and just beside: to even, down and up.
    for (const double tie : {4503599627370497.5, 4503599627370498.5, 0x1p-40, 0x1.8p-30, 1e22}) {
        values.insert(values.end(), {tie, Up(tie), Down(tie)});
    }
    // The last double before each power of ten, where rounding may add a digit.
    for (int i = -320; i <= 308; ++i) {
        const double power = std::strtod(("1e" + std::to_string(i)).c_str(), nullptr);
        values.insert(values.end(), {power, Down(power), Up(power)});
    }
    Random random(61);
    for (int i = 0; i < 20000; ++i) {
        const double of_any_exponent = std::bit_cast<double>(random.Next());
        values.push_back(std::isnan(of_any_exponent) ? kNaN : of_any_exponent);
        values.push_back(random.Uniform(-1000, 1000));
    }
    values.resize(values.size() / 12 * 12, 1);
    for (size_t i = 0; i < values.size(); i += 12) {
        const auto first = values.begin() + static_cast<std::ptrdiff_t>(i);
        const std::vector<double> numbers(first, first + 12);
        ASSERT_EQ(Written(FromNumbers<GBoreCone>(numbers)),
                  Filled("GBoreCone:\n" + kBoreLineText + " eye point: # # #\n", numbers));
    }
}

// Up to four numbers; under the C locale, which is in force. Returns how many were converted.
int ScanAsTheSystemDoes(std::FILE* f, const char* format, double* x) {
#ifdef _WIN32
    // MinGW's fscanf is its own, not the one of the C library.
    return _fscanf_l(f, format, nullptr, x, x + 1, x + 2, x + 3);
#else
    return std::fscanf(f, format, x, x + 1, x + 2, x + 3);
#endif
}

TEST(TextFormat, ReadsNumbersAsScanfDoes) {
    const char* const formats[] = {"", "%lf", "%lf %lf", "%lf %lf %lf", "%lf %lf %lf %lf"};
    const std::string texts[] = {SeriesText(20),
                                 "",
                                 "  ",
                                 "GBoreLine:\n point: 1 2 3\n",
                                 "1 2 x 4 5 6 7 8 9",
                                 "--5 7 8 9 10 11 12 13 14 15 16",
                                 "1 2 3 4 5 6 --7 --8 --9 10 11 12",
                                 SeriesText(12) + " --13 14 15 16 17",
                                 "1 +-2 3 4 5 6 7 8 9 10 11",
                                 "1,5 2,5",
                                 "1e 2e+ 3 4 5 6",
                                 "1 2 inf nan 0x1p4 infinit 7 8 9",
                                 "1e999 -1e999 1e-999 4 5.. 6 7 8"};
    // Which numbers are read by one call, and where the record keeps them.
    const auto check = [&](auto record, const std::vector<unsigned>& groups,
                           const unsigned* order = nullptr) {
        for (const std::string& text : texts) {
            std::vector<double> expected(Numbers(record).size(), 77);
            Stream stream(text);
            double numbers[20];
            std::fill_n(numbers, 20, 77.0);
            double* x = numbers;
            for (const unsigned group : groups) {
                ScanAsTheSystemDoes(stream.File(), formats[group], x);
                x += group;
            }
            for (unsigned i = 0; i < expected.size(); ++i) {
                expected[order != nullptr ? order[i] : i] = numbers[i];
            }
            using Record = decltype(record);
            record = FromNumbers<Record>(std::vector<double>(expected.size(), 77));
            EXPECT_EQ(RestAfterReading(record, text), stream.Rest()) << text;
            EXPECT_EQ(Bits(record), Bits(FromNumbers<Record>(expected))) << text;
        }
    };
    check(GBoreLine{}, {3, 3, 1, 1, 1});
    check(GBoreCone{}, {3, 3, 1, 1, 1, 3});
    check(GMatrix{}, {3, 3, 3});
    check(G4x4{}, {3, 3, 3, 3, 4}, k4x4Order);
    check(GBox{}, {3, 3});
    check(GMatrix2d{}, {2, 2});
    check(GBox2d{}, {2, 2});

    // One call reads both limits of a fence.
    GPosition room;
    GPtFence fence = {77, &room, kX, 77, 77};
    RestAfterReading(fence, "0 1 2 3 --4 5");
    EXPECT_EQ(fence.m_direction.m_z, 3);
    EXPECT_EQ(fence.m_front, 77);
    EXPECT_EQ(fence.m_back, 77);
}

TEST(TextFormat, ReadsTransformations) {
    const std::vector<double> unread(13, 77);
    GTransf t;
    EXPECT_EQ(RestAfterReading(t, "1 0 0 0 1 0 0 0 1 5 6 7 2 1 0 0 9"), " 9");
    EXPECT_EQ(Numbers(t), (std::vector<double>{1, 0, 0, 0, 1, 0, 0, 0, 1, 5, 6, 7, 2, 1, 0, 0}));
    // Of a flag the low byte is kept.
    EXPECT_EQ(RestAfterReading(t, SeriesText(13) + " 258 511 65280"), "");
    EXPECT_EQ(Bits(t),
              Bits(GTransf{FromSeries<GMatrix>(), {10.25, 11.25, 12.25}, 13.25, 2, 255, 0}));
    // What doesn't parse leaves the flags too.
    const auto before = Bits(t);
    EXPECT_EQ(RestAfterReading(t, "GTransf:"), "GTransf:");
    EXPECT_EQ(Bits(t), before);

    GTransf2d planar;
    EXPECT_EQ(RestAfterReading(planar, "1 2 3 4 5 6 7 8 265 10 9"), " 9");
    EXPECT_EQ(Numbers(planar.m_matrix), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(Numbers(planar.m_translation), (std::vector<double>{5, 6}));
    EXPECT_EQ(planar.m_scaling, 7);
    EXPECT_EQ(planar.m_hasRotation, 8);
    EXPECT_EQ(planar.m_hasReflection, 9);
    EXPECT_EQ(planar.m_hasShear, 10);
}

TEST(TextFormat, ReadsAtMostAHundredPoints) {
    const struct {
        std::string count;  // as in the stream
        unsigned long before;
        unsigned long after;
        long err;
    } rows[] = {{"0", 3, 0, 0},     {"5", 3, 5, 0},     {"100", 3, 100, 0},
                {"101", 3, 101, 1}, {"-1", 3, -1UL, 1}, {"4294967295", 3, 4294967295UL, 1},
                {"x", 3, 3, 0},     {"x", 100, 100, 0}, {"x", 101, 101, 1}};
    using Room = std::array<GPosition, 101>;
    Room untouched;
    untouched.fill({77, 77, 77});
    for (const auto& row : rows) {
        const bool parses = row.count != "x";
        const bool reads_on = parses && row.err == 0;
        const int numbers = reads_on ? 3 * static_cast<int>(row.after) : 0;
        std::vector<double> expected = Numbers(untouched);
        std::copy_n(Series(numbers).begin(), numbers, expected.begin());
        const std::string tail = " 1 2 3 4 5 6 7 8 9";
        const std::string text = row.count + SeriesText(numbers) + tail;
        const auto check = [&](auto& record, const std::string& head, size_t numbers_after,
                               const Room& room) {
            const std::string rest = RestAfterReading(record, head + text, row.err);
            EXPECT_EQ(rest, reads_on ? tail.substr(2 * numbers_after) : parses ? tail : text);
            EXPECT_EQ(Numbers(room), expected) << row.count;
        };
        const auto after = [reads_on](const std::vector<double>& read) {
            return reads_on ? read : std::vector<double>(read.size(), 77);
        };

        Room room = untouched;
        GPtFrustum frustum = {{row.before, room.data(), {77, 77, 77}, 77, 77}, {77, 77, 77}};
        check(frustum.m_fence, "", 5, room);
        EXPECT_EQ(frustum.m_fence.m_count, row.after);
        EXPECT_EQ(Numbers(frustum.m_fence.m_direction), after({1, 2, 3}));
        EXPECT_EQ(frustum.m_fence.m_front, after({4})[0]);
        EXPECT_EQ(frustum.m_fence.m_back, after({5})[0]);

        room = untouched;
        frustum.m_fence.m_count = row.before;
        check(frustum, "", 8, room);
        EXPECT_EQ(Numbers(frustum.m_eye), after({6, 7, 8}));

        room = untouched;
        GRtPrism prism = {TransfSeries(), room.data(), row.before, 77};
        check(prism, "9 8 7 6 5 4 3 2 1 0 -1 -2 -3 4 5 6 ", 1, room);
        EXPECT_EQ(Numbers(prism.m_transf),
                  (std::vector<double>{9, 8, 7, 6, 5, 4, 3, 2, 1, 0, -1, -2, -3, 4, 5, 6}));
        EXPECT_EQ(prism.m_count, row.after);
        EXPECT_EQ(prism.m_height, after({1})[0]);
    }
}

TEST(TextFormat, RefusesRecordsWithoutAnArray) {
    MessageRecorder recorder;
    GPtFrustum frustum = {{3, nullptr, {1, 2, 3}, 4, 5}, {6, 7, 8}};
    GRtPrism prism = {TransfSeries(), nullptr, 3, 4};
    EXPECT_EQ(Written(frustum.m_fence, 2), "");
    EXPECT_EQ(Written(frustum, 2), "GPtFrustum:\n");
    EXPECT_EQ(Written(prism, 2), "");
    EXPECT_EQ(RestAfterReading(frustum.m_fence, "9 9", 2), "9 9");
    EXPECT_EQ(RestAfterReading(frustum, "9 9", 2), "9 9");
    EXPECT_EQ(RestAfterReading(prism, "9 9", 2), "9 9");
    EXPECT_EQ(frustum.m_fence.m_count, 3U);
    EXPECT_EQ(Numbers(frustum.m_fence.m_direction), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(Numbers(frustum.m_eye), (std::vector<double>{6, 7, 8}));
    EXPECT_EQ(Bits(prism.m_transf), Bits(TransfSeries()));
    EXPECT_EQ(recorder.Take(), Messages{});
}

// Puts the process under a locale with a decimal comma, while it lives.
class DecimalComma {
  public:
    DecimalComma() {
#ifdef _WIN32
        m_is_set = std::setlocale(LC_ALL, "German_Germany.1252") != nullptr;
#else
        m_is_set = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
#endif
    }
    ~DecimalComma() {
        std::setlocale(LC_ALL, "C");
    }
    DecimalComma(const DecimalComma&) = delete;
    DecimalComma& operator=(const DecimalComma&) = delete;

    bool IsSet() const {
        return m_is_set;
    }

  private:
    bool m_is_set;
};

std::string HalfInTheLocale() {
    char text[10];
    std::snprintf(text, sizeof text, "%.1f", 0.5);
    return text;
}

TEST(TextFormat, KnowsNoDecimalCommaInAnyLocale) {
    const GBoreLine line = FromSeries<GBoreLine>();
    const std::string expected = Filled(kBoreLineText, Series(9));
    const auto check = [&line, &expected] {
        EXPECT_EQ(HalfInTheLocale(), "0,5");
        EXPECT_EQ(Written(line), expected);
        GBoreLine read = {};
        EXPECT_EQ(RestAfterReading(read, SeriesText(9) + ",5"), ",5");
        EXPECT_EQ(Bits(read), Bits(line));
        EXPECT_EQ(HalfInTheLocale(), "0,5") << "the locale is the caller's again";
    };
#ifndef _WIN32
    locale_t german;
#endif
    {
        const DecimalComma comma;
#ifdef _WIN32
        if (!comma.IsSet()) {
            GTEST_SKIP() << "This system has no German locale.";
        }
#endif
        ASSERT_TRUE(comma.IsSet()) << "localedef (Debian: locales) made no de_DE.UTF-8";
        check();
#ifndef _WIN32
        german = duplocale(LC_GLOBAL_LOCALE);
#endif
    }
    EXPECT_EQ(HalfInTheLocale(), "0.5");
#ifndef _WIN32
    // The same under a locale of this thread alone.
    const locale_t before = uselocale(german);
    check();
    EXPECT_EQ(uselocale(before), german);
    freelocale(german);
#endif
}

}  // namespace
}  // namespace kvgeom::test
