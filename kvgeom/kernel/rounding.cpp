// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/rounding.h>

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cmath>

namespace {

constexpr int kMostTextDigits = 9;
// Room for a sign, the digits of DBL_MAX before the point, the point and the decimals.
constexpr int kLongestText = 1 + (DBL_MAX_10_EXP + 1) + 1 + kMostTextDigits;

// 10^exponent by repeated squaring, least significant bit first.
double PowerOfTen(unsigned int exponent) {
    double power = 1.0;
    for (double square = 10.0; exponent != 0; exponent >>= 1, square *= square) {
        if ((exponent & 1U) != 0) {
            power *= square;
        }
    }
    return power;
}

double Round(double value, int digits) {
    const bool to_decimals = digits >= 0;
    // Negated as unsigned, because the magnitude of INT_MIN is no int.
    const unsigned int magnitude =
        to_decimals ? static_cast<unsigned int>(digits) : 0U - static_cast<unsigned int>(digits);
    const double power = to_decimals ? PowerOfTen(magnitude) : 1 / PowerOfTen(magnitude);
    const double rounded = std::floor(value * power + 0.5) / power;
    if (!std::isfinite(rounded) && std::isfinite(value)) {
        return to_decimals ? value : 0.0;
    }
    return rounded;
}

void Print(double value, int digits, unsigned int text_size, char* text) {
    text[0] = '\0';
    if (digits < 0 || digits > kMostTextDigits) {
        return;
    }
    char buffer[kLongestText];
    const std::to_chars_result printed =
        std::to_chars(buffer, buffer + kLongestText, value, std::chars_format::fixed, digits);
    if (printed.ptr - buffer < static_cast<long long>(text_size)) {
        *std::copy(buffer, printed.ptr, text) = '\0';
    }
}

}  // namespace

void KVRoundValue(double value, int digits, double* rounded, unsigned int textSize, char* text) {
    const double result = Round(value, digits);
    *rounded = result;
    if (text != nullptr && textSize != 0) {
        Print(result, digits, textSize, text);
    }
}
