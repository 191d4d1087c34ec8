#include "Util_Json.h"

#include <cmath>
#include <limits>
#include <sstream>

namespace cereal
{

namespace
{

/// JSON has no other numbers than finite ones.
void requireFinite(double number, double greatest)
{
    if (!(std::abs(number) <= greatest))
    {
        std::ostringstream text;
        text << number;
        throw Exception("The number " + text.str() + " isn't finite, or too large for its type");
    }
}

template<class Number>
void loadFinite(JSONInputArchive& archive, Number& number)
{
    double wide = 0;
    archive.loadValue(wide);
    requireFinite(wide, std::numeric_limits<Number>::max());
    number = static_cast<Number>(wide);
}

template<class Number>
void saveFinite(JSONOutputArchive& archive, Number number)
{
    requireFinite(number, std::numeric_limits<Number>::max());
    archive.saveValue(number);
}

} // namespace

void load(JSONInputArchive& archive, float& number)
{
    loadFinite(archive, number);
}

void load(JSONInputArchive& archive, double& number)
{
    loadFinite(archive, number);
}

void save(JSONOutputArchive& archive, const float& number)
{
    saveFinite(archive, number);
}

void save(JSONOutputArchive& archive, const double& number)
{
    saveFinite(archive, number);
}

} // namespace cereal
