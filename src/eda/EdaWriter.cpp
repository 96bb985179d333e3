#include "eda/CJOBXdata.h"
#include "eda/CJOBXdataPkgObjContour.h"
#include "eda/EdaFormat.h"
#include "foundation/CTextWriter.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/Guarded.h"

#include <string>
#include <typeinfo>

// Every record prints itself through one writer, so that one buffer serves the whole file.
namespace
{
CTextLine& operator<<(CTextLine& out, const CPointD& point)
{
    return out << Fixed{point.x} << ' ' << Fixed{point.y};
}

void Write(CTextWriter& out, const CJOBXdataNetObj& object)
{
    CTextLine(out) << eda_format::kFeature << ' ' << object.m_sKind << ' ' << object.m_nLayerIndex << ' '
                   << object.m_nFeatureIndex << '\n';
}

void Write(CTextWriter& out, const CJOBXSnt& subnet);
void Write(CTextWriter& writer, const CJOBXlayObjOX& element);
void Write(CTextWriter& out, const CJOBXdataPkgObj& record);
void Write(CTextWriter& out, const CJOBXdataPkgPin& pin);

template <class T>
void WriteAll(CTextWriter& out, const COwningPtrArray<T>& records)
{
    for (const T& record : records.Records())
        Write(out, record);
}

void WriteHead(CTextWriter& writer, const CJOBXSnt& subnet)
{
    CTextLine out(writer);
    out << eda_format::kSubnet << ' ' << subnet.m_sKind;
    if (subnet.m_sKind.View() == eda_format::kToeprint)
        out << ' ' << subnet.m_sSide << ' ' << subnet.m_nComponentNumber << ' ' << subnet.m_nToeprintNumber;
    else if (subnet.m_sKind.View() == eda_format::kPlane)
        out << ' ' << subnet.m_sFillType << ' ' << subnet.m_sCutoutType << ' ' << Fixed{subnet.m_dFillSize};
    out << '\n';
}

void Write(CTextWriter& out, const CJOBXSnt& subnet)
{
    WriteHead(out, subnet);
    WriteAll(out, subnet.m_arrNetObjs);
}

void Write(CTextWriter& out, const CJOBXdataNet& net)
{
    CTextLine(out) << eda_format::kNet << ' ' << net.m_sName << " \n";
    WriteAll(out, net.m_arrSnts);
}

void Write(CTextWriter& out, const CJOBXdataNetArray& nets)
{
    for (int i = 0; i < static_cast<int>(nets.GetSize()); ++i)
        if (const CJOBXdataNet* const net = nets.GetAt(i))
        {
            CTextLine(out) << eda_format::kNumberedNet << ' ' << i << '\n'; // the index, not the net's number
            Write(out, *net);
        }
}

void Write(CTextWriter& writer, const CJOBXlayObjOX& element)
{
    CTextLine out(writer);
    const CString kind = element.GetKind();
    out << kind;
    if (kind.View() == eda_format::kPolygon)
        out << ' ' << element.GetPoint() << ' ' << element.GetPolygonType();
    else if (kind.View() == eda_format::kSegment)
        out << ' ' << element.GetPoint();
    else if (kind.View() == eda_format::kCurve)
        out << ' ' << element.GetPoint() << ' ' << element.GetCenterPoint() << ' ' << element.GetClockwise();
    out << '\n';
}

void WriteShape(CTextWriter& out, const CJOBXdataPkgObjCircle& circle)
{
    CTextLine(out) << eda_format::kCircle << ' ' << circle.m_ptCenter << ' ' << Fixed{circle.m_dRadius} << '\n';
}

void WriteShape(CTextWriter& out, const CJOBXdataPkgObjSquare& square)
{
    CTextLine(out) << eda_format::kSquare << ' ' << square.m_ptCenter << ' ' << Fixed{square.m_dHalfSide} << '\n';
}

void WriteShape(CTextWriter& out, const CJOBXdataPkgObjRectangle& rectangle)
{
    CTextLine(out) << eda_format::kRectangle << ' ' << rectangle.m_ptLowerLeft << ' ' << Fixed{rectangle.m_dWidth}
                   << ' ' << Fixed{rectangle.m_dHeight} << '\n';
}

void WriteShape(CTextWriter& out, const CJOBXdataPkgObjContour& contour)
{
    out << eda_format::kContour << '\n';
    WriteAll(out, contour.m_arrElements);
    out << eda_format::kContourEnd << '\n';
}

template <class Shape>
void WriteAs(CTextWriter& out, const CJOBXdataPkgObj& record)
{
    if (const auto* const shape = dynamic_cast<const Shape*>(&record))
        WriteShape(out, *shape);
}

void WritePlain(CTextWriter& writer, const CJOBXdataPkgObj& record)
{
    CTextLine out(writer);
    out << record.m_sKeyword;
    for (INT_PTR i = 0; i < record.m_arrParameters.GetSize(); ++i)
        out << ' ' << record.m_arrParameters[i];
    out << '\n';
}

// The keyword decides the form. A shape whose keyword means another class has no form and is skipped.
void Write(CTextWriter& out, const CJOBXdataPkgObj& record)
{
    const std::string_view keyword = record.m_sKeyword.View();
    if (typeid(record) == typeid(CJOBXdataPkgObj))
        WritePlain(out, record);
    else if (keyword == eda_format::kCircle)
        WriteAs<CJOBXdataPkgObjCircle>(out, record);
    else if (keyword == eda_format::kSquare)
        WriteAs<CJOBXdataPkgObjSquare>(out, record);
    else if (keyword == eda_format::kRectangle)
        WriteAs<CJOBXdataPkgObjRectangle>(out, record);
    else if (keyword == eda_format::kContour)
        WriteAs<CJOBXdataPkgObjContour>(out, record);
}

void Write(CTextWriter& out, const CJOBXdataPkgPin& pin)
{
    CTextLine(out) << eda_format::kPin << ' ' << pin.m_sName << ' ' << pin.m_sType << ' ' << pin.m_ptCenter << ' '
                   << Fixed{pin.m_dHoleSize} << ' ' << pin.m_sElectricalType << ' ' << pin.m_sMountType << '\n';
    WriteAll(out, pin.m_arrOutlines);
}

// The properties that have an attribute number, separated by ", ". Blanks and commas at the end are cut, even those of
// the last value.
std::string AttributeList(const CJOBXPropertyArray& properties)
{
    std::string list;
    for (__int64 i = 0; i < properties.GetSize(); ++i)
    {
        const CJOBXProperty* const property = properties.GetAt(i);
        if (property == nullptr || property->m_nNumber == -1)
            continue;
        list += std::to_string(property->m_nNumber) + '=';
        list +=
            property->m_nTextNumber != -1 ? std::to_string(property->m_nTextNumber) : property->m_sValue.GetString();
        list += ", ";
    }
    list.erase(list.find_last_not_of(" ,") + 1);
    return list;
}

void WriteHead(CTextWriter& writer, const CJOBXdataPkg& package)
{
    CTextLine out(writer);
    out << eda_format::kPackage << ' ' << package.m_sName << ' ' << Fixed{package.m_dPitch} << ' '
        << package.m_ptLowerLeft << ' ' << package.m_ptUpperRight;
    if (const std::string list = Guarded([&] { return AttributeList(package.m_arrProperties); }); !list.empty())
        out << " ; " << list;
    out << '\n';
}

void Write(CTextWriter& out, const CJOBXdataPkg& package)
{
    WriteHead(out, package);
    WriteAll(out, package.m_arrOutlines);
    for (const CLProperty& attribute : package.m_arrAttributes.Records())
        CTextLine(out) << eda_format::kProperty << ' ' << attribute.m_sName << " '" << attribute.m_sValue << "'\n";
    WriteAll(out, package.m_arrPins);
}

void Write(CTextWriter& out, const CJOBXdataPkgArray& packages)
{
    for (int i = 0; i < static_cast<int>(packages.GetSize()); ++i)
        if (const CJOBXdataPkg* const package = packages.GetAt(i))
        {
            out << eda_format::kNumberedPackage << ' ' << i << '\n'; // the index, not the package's number
            Write(out, *package);
            out << "#\n";
        }
}

void WriteTable(CTextWriter& out, const char* title, char mark, const CStringArray& texts)
{
    if (texts.GetSize() == 0)
        return;
    out << "#\n#" << title << "\n#\n";
    for (int i = 0; i < static_cast<int>(texts.GetSize()); ++i)
        CTextLine(out) << mark << i << ' ' << texts[i] << '\n';
    out << "#\n";
}

void Write(CTextWriter& out, const CJOBXdata& data)
{
    out << "#\nUNITS=" << data.m_sUnits << "\n#\n"
        << eda_format::kHeader << ' ' << data.m_sHeader << '\n'
        << eda_format::kLayers;
    for (INT_PTR i = 0; i < data.m_arrLayerNames.GetSize(); ++i)
        out << ' ' << data.m_arrLayerNames[i];
    out << '\n';
    WriteTable(out, "Net attribute names", '@', data.m_arrAttributeNames);
    WriteTable(out, "Net attribute text strings", '&', data.m_arrAttributeTexts);
    Write(out, data.m_arrNets);
    Write(out, data.m_arrPkgs);
}

template <class Record>
void WriteTo(std::FILE* file, const Record& record)
{
    CTextWriter out(file);
    Write(out, record);
}

template <class T>
void WriteAllTo(std::FILE* file, const COwningPtrArray<T>& records)
{
    CTextWriter out(file);
    WriteAll(out, records);
}
} // namespace

void CJOBXdata::WriteODBData(CString dir) const
{
    CTextWriter out(CKUtility::GetInstance()->CKPathCombine(dir, "data", __FILE__, __LINE__), __FILE__, __LINE__);
    Write(out, *this);
}

void CJOBXdataNetObj::WriteODBData(std::FILE* file) const
{
    WriteTo(file, *this);
}

void CJOBXdataNetObjArray::WriteODBData(std::FILE* file) const
{
    WriteAllTo(file, *this);
}

void CJOBXSnt::WriteODBData(std::FILE* file) const
{
    WriteTo(file, *this);
}

void CJOBXSntArray::WriteODBData(std::FILE* file) const
{
    WriteAllTo(file, *this);
}

void CJOBXdataNet::WriteODBData(std::FILE* file) const
{
    WriteTo(file, *this);
}

void CJOBXdataNetArray::WriteODBData(std::FILE* file) const
{
    WriteTo(file, *this);
}

void CJOBXdataPkgObj::WriteODBData(std::FILE* file) const
{
    WriteTo(file, *this);
}

void CJOBXdataPkgObjArray::WriteODBData(std::FILE* file) const
{
    WriteAllTo(file, *this);
}

void CJOBXdataPkgPin::WriteODBData(std::FILE* file) const
{
    WriteTo(file, *this);
}

void CJOBXdataPkgPinArray::WriteODBData(std::FILE* file) const
{
    WriteAllTo(file, *this);
}

void CJOBXdataPkg::WriteODBData(std::FILE* file) const
{
    WriteTo(file, *this);
}

void CJOBXdataPkgArray::WriteODBData(std::FILE* file) const
{
    WriteTo(file, *this);
}
