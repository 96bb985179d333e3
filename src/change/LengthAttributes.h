// Attributes whose values are lengths.
#pragma once

#include "foundation/CJOBXProperty.h"
#include "foundation/CJOBXunit.h"

#include <map>
#include <string>
#include <string_view>

class CJOBXmisc;

// Which attributes of a job are lengths. If the job's definition of an attribute names a unit, that decides; else the
// system attributes that are lengths by their meaning do. Letter case is ignored.
class CLengthAttributes
{
public:
    explicit CLengthAttributes(const CJOBXmisc& misc);

    bool IsLength(std::string_view name) const;
    // Whether the attribute is a length and its value is a number.
    bool Holds(const CJOBXProperty& attribute) const;
    // Converts the value of an attribute that is a length from the other unit. A whole number stays one.
    void Convert(CJOBXProperty& attribute, JOBXunit to) const;

private:
    std::map<std::string, bool> m_defined; // by name in lower case: whether it is a length
};
