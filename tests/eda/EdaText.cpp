#include "eda/EdaText.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{
std::string Quoted(const CString& text)
{
    return "[" + std::string(text.View()) + "]";
}

std::string Quoted(const CStringArray& texts)
{
    std::string all;
    for (INT_PTR i = 0; i < texts.GetSize(); ++i)
        all += " " + Quoted(texts[i]);
    return all;
}

std::ostream& operator<<(std::ostream& out, const CPointD& point)
{
    return out << point.x << ',' << point.y;
}

void Add(std::ostream& out, const CJOBXPropertyArray& properties)
{
    for (__int64 i = 0; i < properties.GetSize(); ++i)
    {
        const CJOBXProperty& property = *properties.GetAt(i);
        out << "  property " << Quoted(property.m_sName) << '=' << Quoted(property.m_sValue)
            << Quoted(property.m_arrFurtherValues) << ' ' << property.m_nNumber << ' ' << property.m_nTextNumber
            << '\n';
    }
}

void Add(std::ostream& out, const CJOBXdataPkgObjArray& outlines, const char* indent)
{
    for (__int64 i = 0; i < outlines.GetSize(); ++i)
    {
        const CJOBXdataPkgObj& record = *outlines.GetAt(i);
        out << indent << '@' << record.m_nLineNumber << ' ' << Quoted(record.m_sKeyword)
            << Quoted(record.m_arrParameters) << '\n';
    }
}

void Add(std::ostream& out, const CJOBXdataNet& net)
{
    out << "net " << net.m_nNumber << ' ' << Quoted(net.m_sName) << '\n';
    Add(out, net.m_arrProperties);
    for (__int64 i = 0; i < net.m_arrSnts.GetSize(); ++i)
    {
        const CJOBXSnt& subnet = *net.m_arrSnts.GetAt(i);
        out << "  subnet @" << subnet.m_nLineNumber << ' ' << Quoted(subnet.m_sKind) << " pin "
            << Quoted(subnet.m_sSide) << ' ' << subnet.m_nComponentNumber << ' ' << subnet.m_nToeprintNumber
            << " plane " << Quoted(subnet.m_sFillType) << ' ' << Quoted(subnet.m_sCutoutType) << ' '
            << subnet.m_dFillSize << '\n';
        for (__int64 k = 0; k < subnet.m_arrNetObjs.GetSize(); ++k)
        {
            const CJOBXdataNetObj& object = *subnet.m_arrNetObjs.GetAt(k);
            out << "    @" << object.m_nLineNumber << ' ' << Quoted(object.m_sKind) << ' ' << object.m_nLayerIndex
                << ' ' << object.m_nFeatureIndex << ' ' << Quoted(object.m_sText) << '\n';
        }
    }
}

void Add(std::ostream& out, const CJOBXdataPkg& package)
{
    out << "package " << package.m_nNumber << ' ' << Quoted(package.m_sName) << ' ' << package.m_dPitch << " from "
        << package.m_ptLowerLeft << " to " << package.m_ptUpperRight << '\n';
    Add(out, package.m_arrProperties);
    Add(out, package.m_arrOutlines, "  ");
    for (__int64 i = 0; i < package.m_arrPins.GetSize(); ++i)
    {
        const CJOBXdataPkgPin& pin = *package.m_arrPins.GetAt(i);
        out << "  pin " << Quoted(pin.m_sName) << ' ' << Quoted(pin.m_sType) << ' ' << pin.m_ptCenter << " hole "
            << pin.m_dHoleSize << ' ' << Quoted(pin.m_sElectricalType) << ' ' << Quoted(pin.m_sMountType) << '\n';
        Add(out, pin.m_arrOutlines, "    ");
    }
}

std::string ReadAll(std::FILE* file)
{
    std::string text;
    std::rewind(file);
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
        text += static_cast<char>(c);
    return text;
}
} // namespace

std::unique_ptr<CJOBXdata> ReadEda(std::string_view bytes)
{
    const TempDir dir;
    auto data = std::make_unique<CJOBXdata>();
    EXPECT_EQ(data->ParseODBOfMFC(dir.Write("data", bytes).c_str()), 1);
    return data;
}

std::string WrittenFile(const CJOBXdata& data)
{
    const TempDir dir;
    data.WriteODBData(dir.Path().c_str());
    return dir.Read("data");
}

std::string Describe(const CJOBXdata& data)
{
    std::ostringstream out;
    out.imbue(std::locale::classic());
    if (!data.m_sHeader.IsEmpty())
        out << "header " << Quoted(data.m_sHeader) << '\n';
    if (data.m_arrLayerNames.GetSize() != 0)
        out << "layers" << Quoted(data.m_arrLayerNames) << '\n';
    for (__int64 i = 0; i < data.m_arrNets.GetSize(); ++i)
        Add(out, *data.m_arrNets.GetAt(i));
    for (__int64 i = 0; i < data.m_arrPkgs.GetSize(); ++i)
        Add(out, *data.m_arrPkgs.GetAt(i));
    return out.str();
}

std::string Describe(const CJOBXdataPkgObjArray& outlines)
{
    std::ostringstream out;
    Add(out, outlines, "");
    return out.str();
}

Print::Print() : m_file(std::tmpfile())
{
    if (m_file == nullptr)
        throw std::runtime_error("no temporary file");
}

Print::~Print()
{
    std::fclose(m_file);
}

std::string Print::Text() const
{
    std::fflush(m_file);
    return ReadAll(m_file);
}

CJOBXdataPkgObj& AddOutline(CJOBXdataPkgObjArray& outlines, std::string_view text, int lineNumber)
{
    CJOBXdataPkgObj& record = AddTo(outlines);
    std::istringstream words{std::string(text)};
    std::string word;
    words >> word;
    record.m_sKeyword = std::string_view(word);
    while (words >> word)
        record.m_arrParameters.Add(CString(std::string_view(word)));
    record.m_nLineNumber = lineNumber;
    return record;
}
