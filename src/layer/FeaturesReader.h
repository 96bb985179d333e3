// Reads a features file into a layer.
#pragma once

#include "foundation/CBlankEndedScanner.h"
#include "foundation/CJOBXProperty.h"
#include "reading/CSourceFile.h"

#include <memory>
#include <string_view>

class CJOBXlayer;

// Appends the contents of the scanned file to the layer's tables and features.
void ReadFeatures(CLineScanner& scanner, CJOBXlayer& layer);

// Appends the contents of the file by complete reading.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXlayer& layer);

// The text of a ".pad_usage" number. Every known usage becomes "tooling_hole": intended, files rely on it.
CString PadUsageText(int number);

// Appends one property per item of an attribute list (see CAttributeListScanner). `nameOf` and `textOf` look a number
// up in the attribute tables and return "" for an unknown one. An item without a text number has the number -1, which
// is also looked up.
template <class NameOf, class TextOf>
void AppendProperties(std::string_view attributes, CJOBXPropertyArray& properties, NameOf nameOf, TextOf textOf)
{
    CAttributeListScanner items(attributes);
    for (std::string_view item; items.Next(item);)
    {
        auto property = std::make_unique<CJOBXProperty>();
        const std::size_t equals = item.find('=');
        property->m_nNumber = ParseInteger(item.substr(0, equals));
        property->m_sName = nameOf(property->m_nNumber);
        if (equals != std::string_view::npos)
            property->m_nTextNumber = ParseInteger(item.substr(equals + 1));
        property->m_sValue =
            property->m_sName == ".pad_usage" ? PadUsageText(property->m_nTextNumber) : textOf(property->m_nTextNumber);
        properties.Own(std::move(property));
    }
}
