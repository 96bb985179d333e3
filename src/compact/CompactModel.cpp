#include "compact/CompactModel.h"

#include "compact/CompactFields.h"
#include "compact/NewCopy.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace
{
template <class Compact>
using MainOf = typename jobx::CompactFields<Compact>::Main;

// A units text in the form that the compact model understands. A job that was rewritten has "UNITS=" more than once.
CString UnitsOf(const CString& text)
{
    constexpr std::string_view kPrefix = "UNITS=";
    CString units = text;
    units.Trim();
    units.MakeUpper();
    while (units.View().starts_with(kPrefix))
    {
        units = units.Mid(static_cast<int>(kPrefix.size()));
        units.TrimLeft();
    }
    return units;
}

// Copies the members that correspond.
template <class Compact>
void ConvertFields(const MainOf<Compact>& from, Compact& to);

// Converts a record; overloads handle members that do not correspond.
template <class Compact>
void Convert(const MainOf<Compact>& from, Compact& to)
{
    ConvertFields(from, to);
}
void Convert(const CJOBXlayer& from, CODBlayer& to)
{
    ConvertFields(from, to);
    to.m_sUnits = UnitsOf(from.m_sUnits);
}
void Convert(const CJOBXSpecialSymbol& from, CODBSpecialSymbol& to)
{
    ConvertFields(from, to);
    to.m_sUnits = to.m_layer.m_sUnits;
}
void Convert(const CJOBXnetlist& from, CODBnetlist& to)
{
    ConvertFields(from, to);
    to.m_arrNets.m_sUnits = from.m_arrNets.m_sUnits;
}

// A record of the matching class with the members of that class; null if there is none.
template <class Compact>
std::unique_ptr<Compact> NewClassed(const MainOf<Compact>& from)
{
    std::unique_ptr<Compact> to;
    if constexpr (requires { typename jobx::CompactFields<Compact>::Classes; })
        jobx::CompactFields<Compact>::Classes::ForEach(
            [&]<class Class>(Class*)
            {
                if (const auto* const classed = to == nullptr ? dynamic_cast<const MainOf<Class>*>(&from) : nullptr)
                {
                    auto converted = MakeNew<Class>();
                    ConvertFields(*classed, *converted);
                    to = std::move(converted);
                }
            });
    return to;
}

template <class Compact>
std::unique_ptr<Compact> NewConverted(const MainOf<Compact>& from)
{
    std::unique_ptr<Compact> to = NewClassed<Compact>(from);
    if (to == nullptr)
        to = MakeNew<Compact>();
    Convert(from, *to);
    return to;
}

// Appends the converted records; skips null entries.
template <class List, class Compact>
void ConvertAll(const List& from, COwningPtrArray<Compact>& to)
{
    jobx::ForEachRecord(from, [&](const auto& record) { to.Own(NewConverted<Compact>(record)); });
}

// Properties that features share are copied one by one.
void ConvertAll(const jobx::FeatureProperties::Shared& from, CJOBXPropertyArray& to)
{
    jobx::ForEachRecord(from, [&](const CJOBXProperty& property)
                        { to.Own(std::unique_ptr<CJOBXProperty>(property.clone())); });
}

template <class Compact>
void ConvertFields(const MainOf<Compact>& from, Compact& to)
{
    jobx::ForEachCompactField<Compact>(
        [&](auto field)
        {
            if constexpr (!field.kIsOwn)
            {
                const auto& value = field.Main().Get(from);
                auto& member = field.Ref(to);
                if constexpr (field.Kind() == jobx::FieldKind::Part)
                    Convert(value, member);
                else if constexpr (std::is_same_v<decltype(value), decltype(std::as_const(member))> ||
                                   field.Kind() != jobx::FieldKind::Records)
                    member = value;
                else
                    ConvertAll(value, member);
            }
        });
}

// One table of numbered texts, merged from the tables of several files.
class MergedTable
{
public:
    MergedTable(CStringArray& texts, CArrayN& numbers) : m_texts(texts), m_numbers(numbers) {}

    // Adds a file's table. NumberOf then takes the numbers of that file. The first table is copied unchanged.
    void AddFile(const CStringArray& texts, const CArrayN& numbers)
    {
        m_ofThisFile.clear();
        const INT_PTR size = std::min<INT_PTR>(texts.GetSize(), numbers.GetSize());
        const bool isFirst = m_textOf.empty();
        for (INT_PTR i = 0; i < size; ++i)
        {
            const bool isNew = m_ofThisFile.try_emplace(numbers[i], numbers[i]).second;
            if (isFirst)
                Append(numbers[i], texts[i]);
            else if (isNew) // only the first entry of a number counts
                m_ofThisFile[numbers[i]] = Place(numbers[i], texts[i]);
        }
    }
    // The number in the merged table for a number of the last file added. Numbers without an entry are unchanged.
    int NumberOf(int number) const
    {
        const auto found = m_ofThisFile.find(number);
        return found == m_ofThisFile.end() ? number : found->second;
    }

private:
    void Append(int number, const CString& text)
    {
        m_texts.Add(text);
        m_numbers.Add(number);
        m_textOf.try_emplace(number, text);
        m_numberOf.try_emplace(text, number);
    }
    int Place(int number, const CString& text)
    {
        const auto taken = m_textOf.find(number);
        if (taken != m_textOf.end() && taken->second == text)
            return number;
        if (const auto known = m_numberOf.find(text); known != m_numberOf.end())
            return known->second;
        int free = number;
        if (taken != m_textOf.end())
        {
            while (m_textOf.contains(m_nextFree))
                ++m_nextFree;
            free = m_nextFree;
        }
        Append(free, text);
        return free;
    }

    CStringArray& m_texts;
    CArrayN& m_numbers;
    std::unordered_map<int, CString> m_textOf;
    std::unordered_map<CString, int> m_numberOf;
    std::unordered_map<int, int> m_ofThisFile;
    int m_nextFree = 0;
};

// The side of the components of a layer, -1 if the layer's name does not say.
int SideOf(const CString& layerName)
{
    if (layerName.CompareNoCase("comp_+_bot") == 0)
        return 0;
    return layerName.CompareNoCase("comp_+_top") == 0 ? 1 : -1;
}

void Convert(const CJOBXcomponentsArray& files, CODBcomponents& to)
{
    MergedTable names(to.m_arrAttributeNames, to.m_arrAttributeNameNumbers);
    MergedTable texts(to.m_arrAttributeTexts, to.m_arrAttributeTextNumbers);
    int count = 0;
    for (const CJOBXcomponents& file : files.Records())
    {
        to.m_sUnits = ++count == 1 ? file.m_sUnits : to.m_sUnits;
        to.m_sLayerName = count == 1 ? file.m_sLayerName : "";
        to.m_sRelativePath = count == 1 ? file.m_sRelativePath : "";
        names.AddFile(file.m_arrAttributeNames, file.m_arrAttributeNameNumbers);
        texts.AddFile(file.m_arrAttributeTexts, file.m_arrAttributeTextNumbers);
        const __int64 first = to.m_arrCmps.GetSize();
        ConvertAll(file.m_arrCmps, to.m_arrCmps);
        for (__int64 k = first; k < to.m_arrCmps.GetSize(); ++k)
        {
            CODBcmp& component = *to.m_arrCmps.GetAt(k);
            if (component.m_nSide == -1)
                component.m_nSide = SideOf(file.m_sLayerName);
            for (__int64 n = 0; n < component.m_arrAttributes.GetSize(); ++n)
            {
                CJOBXProperty& attribute = *component.m_arrAttributes.GetAt(n);
                attribute.m_nNumber = names.NumberOf(attribute.m_nNumber);
                attribute.m_nTextNumber = texts.NumberOf(attribute.m_nTextNumber);
            }
        }
    }
}

void ConvertJob(const CJOBX& job, CODB& to)
{
    to.m_sSource = job.m_pMisc->m_sODBSource;
    ConvertAll(*job.m_pSpecialSymbols, to.m_arrSpecialSymbols);
    Convert(*job.m_pMatrix, to.m_matrix);
    ConvertAll(*job.m_pSysAttrs, to.m_arrSysAttrs);
}

void ConvertStep(const CJOBXstepObj& step, CODB& to)
{
    to.m_pSingleLayer = NewConverted<CODBlayer>(*step.GetProfile());
    ConvertAll(step.m_arrLayers, to.m_arrLayers);
    Convert(step.m_arrComponents, *to.m_pComponents);
    Convert(*step.GetEda()->m_pData, *to.m_pData);
    Convert(*step.GetNetlist(), to.m_netlist);
    to.m_arrStephdrs.Own(NewConverted<CODBstephdr>(*step.GetHeader()));
}
} // namespace

CODB* pMakeCompactModel(const CJOBX& job, const CJOBXstepObj* step)
{
    if (step == nullptr)
        return nullptr;
    return Guarded(
        [&]
        {
            auto model = std::make_unique<CODB>();
            ConvertJob(job, *model);
            ConvertStep(*step, *model);
            return model.release();
        });
}

CODB* pMakeCompactModel(const CJOBX& job, const CString& stepName)
{
    const CJOBXstepObjArray& steps = job.m_pSteps->m_arrSteps;
    for (const CJOBXstepObj& step : steps.Records())
        if (step.m_sName.CompareNoCase(stepName) == 0)
            return pMakeCompactModel(job, &step);
    return nullptr;
}
