// The names of symbols in another unit.
#pragma once

#include "foundation/CJOBXunit.h"
#include "foundation/framework/CString.h"

#include <set>
#include <string>
#include <string_view>

class CJOBXlayer;
class CJOBXSpecialSymbolArray;

// The name of a standard symbol with its lengths, which are mils or microns, in the other unit: "r10" is "r254". Angles,
// counts, shares of a size and numbers of corners stay. "" if no standard symbol has a name of that form.
std::string ConvertedSymbolName(std::string_view name, JOBXunit to);

// The names of symbols of one job.
class CSymbolNames
{
public:
    // Knows the user symbols of the job from now on.
    explicit CSymbolNames(const CJOBXSpecialSymbolArray& symbols);

    // The name in the other unit. A user symbol, whatever its name, and a name of no standard form keep it.
    CString Converted(const CString& name, JOBXunit to) const;
    // Converts the symbol table of a layer whose unit is the other one. An entry with a unit letter of its own gets the
    // other letter; one that has that already stays.
    void ConvertTable(CJOBXlayer& layer, JOBXunit to) const;

private:
    std::set<std::string> m_userSymbols; // in lower case
};

// The letter of a unit in an entry of a symbol table: "I" or "M".
constexpr char UnitLetter(JOBXunit unit) noexcept
{
    return unit == JOBXunit::Millimetre ? 'M' : 'I';
}
