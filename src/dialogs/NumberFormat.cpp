#include "dialogs/NumberFormat.h"

#include <cmath>
#include <cstdio>

namespace numfmt {

std::string Grouped(std::int64_t value) {
    const bool negative = value < 0;
    std::uint64_t rest =
        negative ? static_cast<std::uint64_t>(-(value + 1)) + 1 : static_cast<std::uint64_t>(value);
    std::string text;
    int digits = 0;
    do {
        if (digits > 0 && digits % 3 == 0) {
            text.insert(text.begin(), ',');
        }
        text.insert(text.begin(), static_cast<char>('0' + rest % 10));
        rest /= 10;
        ++digits;
    } while (rest != 0);
    return negative ? "-" + text : text;
}

std::string GroupedDecimal2(double value) {
    const bool negative = value < 0;
    const auto hundredths = static_cast<std::int64_t>(std::llround(std::fabs(value) * 100.0));
    char fraction[8];
    std::snprintf(fraction, sizeof fraction, ".%02d", static_cast<int>(hundredths % 100));
    const std::string text = Grouped(hundredths / 100) + fraction;
    return negative && hundredths != 0 ? "-" + text : text;
}

std::string Kilobytes(std::uint64_t bytes) {
    return GroupedDecimal2(static_cast<double>(bytes) * 0.0009765625);
}

} // namespace numfmt
