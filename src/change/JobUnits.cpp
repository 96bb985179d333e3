#include "change/JobUnits.h"

#include "change/LengthAttributes.h"
#include "change/LengthConversion.h"
#include "change/PackageUnits.h"
#include "change/SymbolNames.h"
#include "foundation/framework/Guarded.h"
#include "job/CJOBXFields.h"
#include "netlist/CJOBXnetlist.h"

#include <memory>
#include <type_traits>
#include <unordered_set>

namespace
{
using jobx::FieldKind;

// Records in which there may be others with a unit of their own.
template <class Record>
constexpr bool kHoldsUnits = std::is_base_of_v<CJOBXmeasured, Record> || std::is_same_v<Record, CJOBX> ||
                             std::is_same_v<Record, CJOBXstepObj> || std::is_same_v<Record, CJOBXSpecialSymbol>;

// The texts of a step's header that are lengths: the margins of the active area.
constexpr bool IsMargin(std::string_view key)
{
    return key == "topActive" || key == "bottomActive" || key == "rightActive" || key == "leftActive";
}

// Walks over the fields of all records. A record with a unit says whether its lengths, and those of the records in it,
// are converted.
class CUnitChange
{
public:
    CUnitChange(const CJOBX& job, JOBXunit to) : m_to(to), m_attributes(*job.m_pMisc), m_names(*job.m_pSpecialSymbols)
    {
    }

    template <class Record>
    void Convert(Record& record, bool isOther)
    {
        if constexpr (std::is_base_of_v<CJOBXmeasured, Record>)
            isOther = IsConverted(record);
        Prepare(record, isOther);
        jobx::ForEachField<Record>([&](auto field) { ConvertField<decltype(field)>(record, isOther); });
        if constexpr (std::is_base_of_v<CJOBXmeasured, Record>)
            if (isOther)
                record.SetUnit(m_to);
    }

private:
    template <class Record>
    bool IsConverted(const Record& record) const
    {
        return record.GetUnit() != m_to;
    }
    // Without a units line a font is in inch.
    bool IsConverted(const CJOBXfonts& font) const
    {
        return m_to == JOBXunit::Inch && font.GetUnit() == JOBXunit::Millimetre;
    }
    // A layer without a file of tools has tools without a unit.
    bool IsConverted(const CJOBXtool& tools) const
    {
        const bool isThere =
            !tools.m_sUnits.IsEmpty() || tools.m_dThickness != 0.0 || tools.m_arrToolData.GetSize() > 0;
        return isThere && tools.GetUnit() != m_to;
    }

    // What the fields do not say.
    template <class Record>
    void Prepare(Record& /*record*/, bool /*isOther*/)
    {
    }
    void Prepare(CJOBXlayer& layer, bool isOther)
    {
        if (isOther)
            m_names.ConvertTable(layer, m_to);
    }
    void Prepare(CJOBXstepObj& step, bool /*isOther*/)
    {
        if (step.pGetFurtherNetlists() != nullptr)
            ConvertRecords(*step.pMakeFurtherNetlists(), false);
    }
    void Prepare(CJOBXProperty& attribute, bool isOther)
    {
        if (isOther)
            m_attributes.Convert(attribute, m_to);
    }

    template <class Field, class Record>
    void ConvertField(Record& record, bool isOther)
    {
        constexpr FieldKind kKind = Field::kKind;
        if constexpr (kKind == FieldKind::Part)
            Convert(Field::Ref(record), isOther);
        else if constexpr (kKind == FieldKind::OptionalPart)
            ConvertAttributeList(record);
        else if constexpr (kKind == FieldKind::Records)
            ConvertList<Field>(record, isOther);
        else if (isOther)
            ConvertValue<Field>(record);
    }

    // A file "attrlist" is the only part that need not be there.
    void ConvertAttributeList(CJOBXattributed& owner)
    {
        if (owner.pGetAttributeList() != nullptr)
            Convert(*owner.pMakeAttributeList(), false);
    }

    template <class Field, class Record>
    void ConvertList(Record& record, bool isOther)
    {
        using Element = jobx::RecordOfList<std::remove_cvref_t<decltype(Field::Get(record))>>;
        if constexpr (std::is_same_v<Element, CJOBXProperty>)
        {
            if (isOther)
                ConvertAttributes<Field>(record);
        }
        else if constexpr (requires { Field::Ref(record).GetData(); })
        {
            if (isOther || kHoldsUnits<Element>)
                ConvertRecords(Field::Ref(record), isOther);
        }
    }
    template <class List>
    void ConvertRecords(List& list, bool isOther)
    {
        jobx::ForEachRecord(list, [&](auto& record) { Convert(record, isOther); });
    }
    // Copies of a contour share its elements.
    void ConvertRecords(CJOBXlayObjOXArray& elements, bool isOther)
    {
        if (m_contours.insert(&elements).second)
            jobx::ForEachRecord(elements, [&](CJOBXlayObjOX& element) { Convert(element, isOther); });
    }

    // Properties, which nets, packages and components have besides attributes, measure nothing that is known.
    template <class Field, class Record>
    void ConvertAttributes(Record& record)
    {
        constexpr bool kAreAttributes = Field::kField.key == "attributes" || std::is_same_v<Record, CJOBXlayObj>;
        if constexpr (kAreAttributes && requires { Field::Ref(record); })
        {
            // Looked at first: features share their lists until one changes its own.
            const auto& found = Field::Get(static_cast<const Record&>(record));
            bool isLength = false;
            jobx::ForEachRecord(found, [&](const CJOBXProperty& attribute)
                                { isLength = isLength || m_attributes.Holds(attribute); });
            if (isLength)
                ConvertRecords(Field::Ref(record), true);
        }
    }

    template <class Field, class Record>
    void ConvertValue(Record& record)
    {
        constexpr FieldKind kKind = Field::kKind;
        constexpr std::string_view kKey = Field::kField.key;
        if constexpr (kKind == FieldKind::Class)
            Field::kField.access.Find(record, [&](auto& classed) { Convert(classed, true); });
        else if constexpr ((kKind == FieldKind::Length && kKey != "widthFactor") || kKey == "resizeFactor")
            Field::Set(record, ConvertedLength(Field::Get(record), m_to));
        else if constexpr (kKind == FieldKind::Coordinate)
            Field::Set(record, ConvertedPoint(Field::Get(record), m_to));
        else if constexpr (kKind == FieldKind::Parameters)
            for (INT_PTR i = 0; i < Field::Get(record).GetSize(); ++i)
                ConvertText(Field::Ref(record)[i]);
        else if constexpr (std::is_same_v<Record, CJOBXstephdr> && IsMargin(kKey))
            ConvertText(Field::Ref(record));
        else if constexpr (kKind == FieldKind::Text && kKey == "units")
            Field::Set(record, CString(UnitsText(m_to)));
    }
    void ConvertText(CString& text)
    {
        if (const auto converted = ConvertedNumber(text.View(), m_to))
            text = std::string_view(*converted);
    }

    JOBXunit m_to;
    CLengthAttributes m_attributes;
    CSymbolNames m_names;
    std::unordered_set<const CJOBXlayObjOXArray*> m_contours;
};
} // namespace

CJOBXresult ConvertJobUnits(CJOBX& job, JOBXunit unit)
{
    if (!job.GetReading().IsComplete())
        return CJOBXresult("the job was not read completely");
    Guarded([&] { CUnitChange(job, unit).Convert(job, false); });
    return {};
}

void ConvertPackage(const CJOBX& job, CJOBXdataPkg& package, JOBXunit to)
{
    CUnitChange(job, to).Convert(package, true);
}
