#include "numbers.h"

#include "failures.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

struct FoundNumber
{
    double value = 0;
    qsizetype length = 0; ///< characters up to its end, blanks before it included; 0 when there is no number
};

// Up to this many digits, the digits and the power of ten are exact doubles, so that one division rounds right.
constexpr int kExactDigits = 15;
constexpr std::array<double, kExactDigits + 1> kPowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

double ToDouble(const char16_t *first, const char16_t *last)
{
    return QStringView(first, last).toDouble();
}

double ToDouble(const char *first, const char *last)
{
    return QString::fromLatin1(first, last - first).toDouble();
}

template<class Char>
double ParsedByQt(const Char *first, const Char *last)
{
    // Further ones change no double, be it huge or tiny; Qt would look at millions of them for seconds.
    constexpr std::ptrdiff_t kMostDigits = 1100;
    first = std::find_if(first, last, [](Char digit) { return digit != '0'; });
    return ToDouble(first, first + std::min(last - first, kMostDigits));
}

template<class Char>
const Char *SkipBlanks(const Char *at, const Char *end)
{
    while (at != end && *at == ' ')
        ++at;
    return at;
}

template<class Char>
FoundNumber FindNumber(const Char *const begin, const Char *const end)
{
    const Char *at = SkipBlanks(begin, end);
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+'))
        ++at;

    const Char *const start = at;
    qint64 digits = 0;
    qsizetype count = 0;
    qsizetype decimals = 0;
    bool inFraction = false;
    for (; at != end; ++at) {
        if (*at == '.' && !inFraction) {
            inFraction = true;
        } else if (*at >= '0' && *at <= '9') {
            if (++count <= kExactDigits)
                digits = digits * 10 + (*at - '0');
            if (inFraction)
                ++decimals;
        } else {
            break;
        }
    }
    if (count == 0)
        return {};
    const double value = count > kExactDigits
                             ? ParsedByQt(start, at)
                             : static_cast<double>(digits) / kPowersOfTen[static_cast<size_t>(decimals)];
    return {negative ? -value : value, at - begin};
}

FoundNumber FindNumber(QStringView text)
{
    return FindNumber(text.utf16(), text.utf16() + text.size());
}

} // namespace

double LeadingNumber(QStringView text)
{
    return FindNumber(text).value;
}

double LeadingNumber(std::string_view text)
{
    return FindNumber(text.data(), text.data() + text.size()).value;
}

bool IsNumeric(QStringView text)
{
    const qsizetype length = FindNumber(text).length;
    const char16_t *const end = text.utf16() + text.size();
    return length > 0 && SkipBlanks(text.utf16() + length, end) == end;
}

qint32 WholeNumber(double number)
{
    const double rounded = std::nearbyint(number);
    // Written so that a number that is none fails too.
    if (!(rounded >= std::numeric_limits<qint32>::min() && rounded <= std::numeric_limits<qint32>::max()))
        throw ProgramError(Failure::Overflow, u"Overflow"_s);
    return static_cast<qint32>(rounded);
}

QString NumberText(double number)
{
    // Nearly every number is a small whole one; writing those is much quicker.
    if (const auto whole = static_cast<int>(std::clamp(number, -9999.0, 9999.0)); number == whole)
        return QString::number(whole);
    return QString::number(number, 'f', QLocale::FloatingPointShortest);
}

QString PadNumber(double number, int width)
{
    return NumberText(number).rightJustified(width, u'0');
}
