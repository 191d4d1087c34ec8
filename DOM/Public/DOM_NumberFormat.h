#pragma once

namespace Zem::DOM
{

/// How the numbers of pages and list items are written.
enum class NumberFormat : unsigned char
{
    Decimal,
    LowerLetter,
    UpperLetter,
    LowerRoman,
    UpperRoman,
    Ordinal,
    Bullet
};

constexpr NumberFormat getLastEnumerator(NumberFormat)
{
    return NumberFormat::Bullet;
}

} // namespace Zem::DOM
