#include "eda/CJOBXdata.h"
#include "eda/EdaFormat.h"
#include "foundation/CBlankEndedScanner.h"
#include "foundation/CListFiller.h"
#include "foundation/CRecordPool.h"
#include "foundation/CTextCache.h"
#include "foundation/FieldTexts.h"
#include "foundation/KeywordTable.h"
#include "foundation/framework/Guarded.h"

#include <memory>
#include <string>

namespace
{
// The kind of record opened last.
enum class Inside
{
    Nothing,
    Net,
    Package,
    Pin
};

struct EdaReading
{
    CJOBXdata& data;
    CLineScanner& text;
    Inside inside = Inside::Nothing;
    // The current records; null until the first one.
    CJOBXdataNet* net = nullptr;
    CJOBXSnt* subnet = nullptr;
    CJOBXdataPkg* package = nullptr;
    CJOBXdataPkgPin* pin = nullptr;
    // The lists of the current net, subnet, package and pin, to be filled.
    CListFiller<CJOBXSnt> subnets{};
    CListFiller<CJOBXdataNetObj> netObjects{};
    CListFiller<CJOBXdataPkgPin> pins{};
    CListFiller<CJOBXdataPkgObj> packageOutlines{};
    CListFiller<CJOBXdataPkgObj> pinOutlines{};
    CTextCache textCache{};

    void Finish()
    {
        subnets.Finish();
        netObjects.Finish();
        pins.Finish();
        packageOutlines.Finish();
        pinOutlines.Finish();
    }
};

// The fields after the keyword at the start of the line. In a line without a blank, the keyword itself is the only
// field.
CFieldScanner FieldsOf(std::string_view line)
{
    CFieldScanner fields(line);
    fields.Skip();
    return fields.IsAtEnd() ? CFieldScanner(line) : fields;
}

// The number in a comment line; every occurrence of the keyword is removed first.
int NumberOfComment(std::string_view line, std::string_view upperKeyword)
{
    std::string number;
    while (!line.empty())
    {
        if (BeginsWith(line, upperKeyword))
        {
            line.remove_prefix(upperKeyword.size());
            continue;
        }
        number += line.front();
        line.remove_prefix(1);
    }
    return ParseInteger(number);
}

// The line after the current one, even if it is empty; "" at the end of the file.
std::string_view LineBehind(EdaReading& reading)
{
    return reading.text.NextAnyLine() ? reading.text.Line() : std::string_view();
}

bool HasAttributes(std::string_view line)
{
    return line.find(';') != std::string_view::npos;
}

bool Contains(std::string_view line, std::string_view upperKeyword)
{
    for (; line.size() >= upperKeyword.size(); line.remove_prefix(1))
        if (BeginsWith(line, upperKeyword))
            return true;
    return false;
}

void AddNet(EdaReading& reading, std::string_view line, int number)
{
    auto net = record_pool::New<CJOBXdataNet>();
    net->m_nNumber = number;
    net->m_sName = WithoutKeyword(line);
    reading.net = reading.data.m_arrNets.Own(std::move(net));
    reading.subnets.Begin(reading.net->m_arrSnts);
}

// A package with attributes is never kept; what follows goes to the package before it. Files rely on this.
void AddPackage(EdaReading& reading, std::string_view line, int number)
{
    reading.inside = Inside::Package;
    if (HasAttributes(line))
        return;
    auto package = record_pool::New<CJOBXdataPkg>();
    CBlankEndedScanner fields(WithoutKeyword(line));
    package->m_nNumber = number;
    package->m_sName = fields.Token();
    package->m_dPitch = fields.Real();
    package->m_ptLowerLeft.SetX(fields.Real());
    package->m_ptLowerLeft.SetY(fields.Real());
    package->m_ptUpperRight.SetX(fields.Real());
    package->m_ptUpperRight.SetY(ParseReal(fields.Rest()));
    reading.package = reading.data.m_arrPkgs.Own(std::move(package));
    reading.pins.Begin(reading.package->m_arrPins);
    reading.packageOutlines.Begin(reading.package->m_arrOutlines);
}

void OnHeader(EdaReading& reading, std::string_view line)
{
    reading.inside = Inside::Nothing;
    reading.data.m_sHeader = WithoutKeyword(line);
}

void OnLayers(EdaReading& reading, std::string_view line)
{
    reading.inside = Inside::Nothing;
    AddFields(reading.data.m_arrLayerNames, CFieldScanner(WithoutKeyword(line)), reading.textCache);
}

void OnNumberedNet(EdaReading& reading, std::string_view line)
{
    const int number = NumberOfComment(line, eda_format::kNumberedNet);
    const std::string_view behind = LineBehind(reading);
    if (!BeginsWith(behind, eda_format::kNet))
    {
        reading.net = nullptr;
        return;
    }
    AddNet(reading, behind, number); // attributes stay part of the name
    reading.inside = Inside::Net;
}

// Does not change what is open: the next property goes where it would have gone before.
void OnNet(EdaReading& reading, std::string_view line)
{
    if (!HasAttributes(line))
        AddNet(reading, line, -1);
}

void OnNumberedPackage(EdaReading& reading, std::string_view line)
{
    const int number = NumberOfComment(line, eda_format::kNumberedPackage);
    const std::string_view behind = LineBehind(reading);
    if (BeginsWith(behind, eda_format::kPackage))
        AddPackage(reading, behind, number);
}

void OnPackage(EdaReading& reading, std::string_view line)
{
    AddPackage(reading, line, -1);
}

void OnPin(EdaReading& reading, std::string_view line)
{
    reading.inside = Inside::Pin; // also without a package
    if (reading.package == nullptr)
        return;
    auto pin = record_pool::New<CJOBXdataPkgPin>();
    CBlankEndedScanner fields(WithoutKeyword(line));
    pin->m_sName = fields.Token();
    pin->m_sType = fields.Token();
    pin->m_ptCenter.SetX(fields.Real());
    pin->m_ptCenter.SetY(fields.Real());
    pin->m_dHoleSize = fields.Real();
    pin->m_sElectricalType = fields.Token();
    pin->m_sMountType = fields.Rest();
    reading.pin = reading.pins.Own(std::move(pin));
    reading.pinOutlines.Begin(reading.pin->m_arrOutlines);
}

void OnFeatureGroup(EdaReading& reading, std::string_view line)
{
    if (reading.subnet == nullptr)
        return;
    auto object = record_pool::New<CJOBXdataNetObj>();
    object->m_nLineNumber = reading.text.LineNumber();
    object->m_sKind = eda_format::kFeatureGroup;
    object->m_sText = WithoutKeyword(line);
    reading.netObjects.Own(std::move(object));
}

// Where a property goes: after a package to the net read before it, after a pin to that pin's package. Hosts rely on
// this shift.
CJOBXPropertyArray* PropertiesOf(const EdaReading& reading)
{
    if (reading.inside == Inside::Package && reading.net != nullptr)
        return &reading.net->m_arrProperties;
    if (reading.inside == Inside::Pin && reading.package != nullptr)
        return &reading.package->m_arrProperties;
    return nullptr;
}

void OnProperty(EdaReading& reading, std::string_view line)
{
    CJOBXPropertyArray* const properties = PropertiesOf(reading);
    if (properties == nullptr)
        return;
    auto property = record_pool::New<CJOBXProperty>();
    CBlankEndedScanner fields(WithoutKeyword(line));
    property->m_sName = reading.textCache.Of(fields.Token());
    CFieldScanner values(fields.Rest());
    values.Text(property->m_sValue); // quotes are kept, and a quoted text with blanks is split
    AddFields(property->m_arrFurtherValues, values, reading.textCache);
    properties->Own(std::move(property));
}

// Kinds with additional fields are compared exactly: "top" has none.
void OnSubnet(EdaReading& reading, std::string_view line)
{
    if (reading.net == nullptr)
        return;
    auto subnet = record_pool::New<CJOBXSnt>();
    CFieldScanner fields = FieldsOf(line);
    subnet->m_nLineNumber = reading.text.LineNumber();
    fields.Text(subnet->m_sKind);
    if (subnet->m_sKind.View() == eda_format::kToeprint)
    {
        fields.Text(subnet->m_sSide);
        fields.Integer(subnet->m_nComponentNumber);
        fields.Integer(subnet->m_nToeprintNumber);
    }
    else if (subnet->m_sKind.View() == eda_format::kPlane)
    {
        fields.Text(subnet->m_sFillType);
        fields.Text(subnet->m_sCutoutType);
        fields.Real(subnet->m_dFillSize);
    }
    reading.subnet = reading.subnets.Own(std::move(subnet));
    reading.netObjects.Begin(reading.subnet->m_arrNetObjs);
}

void OnFeature(EdaReading& reading, std::string_view line)
{
    if (reading.subnet == nullptr)
        return;
    auto object = record_pool::New<CJOBXdataNetObj>();
    CFieldScanner fields = FieldsOf(line);
    object->m_nLineNumber = reading.text.LineNumber();
    fields.Text(object->m_sKind);
    fields.Integer(object->m_nLayerIndex);
    fields.Integer(object->m_nFeatureIndex);
    reading.netObjects.Own(std::move(object));
}

// Where an outline goes; null if an unknown line is skipped.
CListFiller<CJOBXdataPkgObj>* OutlinesOf(EdaReading& reading)
{
    if (reading.inside == Inside::Package && reading.package != nullptr)
        return &reading.packageOutlines;
    if (reading.inside == Inside::Pin && reading.pin != nullptr)
        return &reading.pinOutlines;
    return nullptr;
}

void OnAnyOther(EdaReading& reading, std::string_view line)
{
    CListFiller<CJOBXdataPkgObj>* const outlines = OutlinesOf(reading);
    if (outlines == nullptr)
        return;
    auto record = record_pool::New<CJOBXdataPkgObj>();
    CFieldScanner fields(line);
    record->m_nLineNumber = reading.text.LineNumber();
    fields.Text(record->m_sKeyword);
    AddFields(record->m_arrParameters, fields, reading.textCache);
    outlines->Own(std::move(record));
}

// Tried from the top, first match wins, ignoring the line's letter case. The order is behaviour: do not sort it.
constexpr Keyword<EdaReading> kEdaKeywords[] = {
    {eda_format::kHeader, OnHeader},
    {eda_format::kLayers, OnLayers},
    {eda_format::kNumberedNet, OnNumberedNet}, // also takes the next line
    {eda_format::kNet, OnNet},
    {eda_format::kNumberedPackage, OnNumberedPackage}, // also takes the next line
    {eda_format::kPackage, OnPackage},
    {eda_format::kPin, OnPin},
    {eda_format::kFeatureGroup, OnFeatureGroup},
    {eda_format::kProperty, OnProperty},
    {eda_format::kSubnet, OnSubnet},
    {eda_format::kFeature, OnFeature},
    {"", OnAnyOther},
};

// A comment counts only if it contains the number of a net or package, in any place.
bool IsSkipped(std::string_view line)
{
    return line.front() == '#' && !Contains(line, eda_format::kNumberedNet) &&
           !Contains(line, eda_format::kNumberedPackage);
}

void ReadLines(CLineScanner& text, CJOBXdata& data)
{
    EdaReading reading{data, text};
    while (text.NextLine())
        if (!IsSkipped(text.Line()))
            Dispatch<kEdaKeywords>(reading, text.Line());
    reading.Finish();
}
} // namespace

int CJOBXdata::ParseODBOfMFC(CString path)
{
    return Guarded(
        [&]
        {
            CLineScanner text(path, __FILE__, __LINE__);
            ReadLines(text, *this);
            return text.WasRead() ? 1 : 0;
        });
}
