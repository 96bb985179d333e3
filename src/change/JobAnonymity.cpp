#include "change/JobAnonymity.h"

#include "components/CJOBXcomponents.h"
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "foundation/framework/AsciiText.h"
#include "foundation/framework/Guarded.h"
#include "job/CJOBX.h"
#include "job/CJOBXmisc.h"
#include "job/CJOBXsteps.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "netlist/CJOBXnetlist.h"
#include "step/CJOBXstepObj.h"

#include <algorithm>
#include <map>
#include <string>

namespace
{
constexpr std::string_view kNameOfNoNet = "$NONE$";

bool ContainsOneOf(const CString& text, std::initializer_list<const char*> parts)
{
    const CString upper = CString(text).MakeUpper();
    return std::any_of(parts.begin(), parts.end(), [&](const char* part) { return upper.Find(part) >= 0; });
}

bool IsPath(const CString& text)
{
    return text.FindOneOf("/\\") >= 0;
}

// The new names of one kind of old ones, in the order in which they are asked for.
class CNewNames
{
public:
    explicit CNewNames(const char* prefix) : m_prefix(prefix) {}

    // Gives the name a number.
    void Know(const CString& name)
    {
        if (name.IsEmpty() || name.View() == kNameOfNoNet || m_names.contains(name))
            return;
        CString made;
        made.Format("%s%d", m_prefix, static_cast<int>(m_names.size()) + 1);
        m_names.emplace(name, made);
    }
    // Null for a name that is not known.
    const CString* Find(const CString& name) const
    {
        const auto found = m_names.find(name);
        return found == m_names.end() ? nullptr : &found->second;
    }
    bool Replace(CString& name) const
    {
        const CString* const made = Find(name);
        if (made != nullptr)
            name = *made;
        return made != nullptr;
    }

private:
    const char* m_prefix;
    std::map<CString, CString> m_names;
};

class CAnonymity
{
public:
    explicit CAnonymity(CJOBX& job) : m_job(job) {}

    void Make()
    {
        for (const CJOBXstepObj& step : m_job.m_pSteps->m_arrSteps.Records())
            Know(step);
        for (CJOBXstepObj& step : m_job.m_pSteps->m_arrSteps.Records())
            Change(step);
        for (CJOBXSpecialSymbol& symbol : m_job.m_pSpecialSymbols->Records())
            Change(*symbol.GetLayer());
        ChangeList(*m_job.m_pMisc);
        Empty(*m_job.m_pMisc);
        m_job.m_pMisc->GetCarriedFiles()->DeleteAll();
    }

private:
    static bool HasPartNumber(const CString& property)
    {
        return ContainsOneOf(property, {"PART", "MFR", "MPN", "MANUF", "VENDOR", "SUPPLIER"});
    }

    // A number or an option is not a name, even if a net is called so.
    static bool MayBeName(const CJOBXProperty& attribute)
    {
        return attribute.GetKind() == JOBXattributeKind::Text || attribute.GetKind() == JOBXattributeKind::Unknown;
    }

    void Know(const CJOBXnetlist& netlist)
    {
        for (const CJOBXnet& net : netlist.m_arrNets.Records())
            m_nets.Know(net.m_sName);
    }
    void Know(const CJOBXstepObj& step)
    {
        for (const CJOBXdataNet& net : step.GetEda()->m_pData->m_arrNets.Records())
            m_nets.Know(net.m_sName);
        Know(*step.GetNetlist());
        if (const CJOBXnetlistArray* const further = step.pGetFurtherNetlists())
            for (const CJOBXnetlist& netlist : further->Records())
                Know(netlist);
        for (const CJOBXcomponents& file : step.m_arrComponents.Records())
            for (const CJOBXcmp& component : file.m_arrCmps.Records())
                Know(component);
    }
    void Know(const CJOBXcmp& component)
    {
        m_components.Know(component.m_sName);
        m_parts.Know(component.m_sPartName);
        for (const CLProperty& property : component.m_arrProperties.Records())
            if (HasPartNumber(property.m_sName))
                m_parts.Know(property.m_sValue);
    }

    // A text that is exactly a name, of whatever kind. Designators are the most likely in texts of layers.
    void ChangeText(CString& text) const
    {
        if (!m_components.Replace(text) && !m_nets.Replace(text))
            m_parts.Replace(text);
    }
    CString Changed(CString text) const
    {
        ChangeText(text);
        return text;
    }
    void ChangeTexts(CStringArray& texts) const
    {
        for (INT_PTR i = 0; i < texts.GetSize(); ++i)
            ChangeText(texts[i]);
    }
    void Change(CJOBXPropertyArray& list) const
    {
        for (CJOBXProperty& property : list.Records())
            if (MayBeName(property))
                ChangeText(property.m_sValue);
    }
    void ChangeTail(CJOBXtailed& record) const
    {
        if (record.pGetTailAttributes() != nullptr)
            Change(*record.pMakeTailAttributes());
    }
    void ChangeList(CJOBXattributed& owner) const
    {
        if (owner.pGetAttributeList() != nullptr)
            Change(*owner.pMakeAttributeList()->GetAttributes());
    }

    void Change(CJOBXstepObj& step) const
    {
        ChangeList(step);
        Change(*step.GetProfile());
        for (CJOBXlayer& layer : step.m_arrLayers.Records())
            Change(layer);
        for (CJOBXcomponents& file : step.m_arrComponents.Records())
            Change(file);
        Change(*step.GetEda()->m_pData);
        ChangeWords(step.GetEda()->GetShorts());
        Change(*step.GetNetlist());
        if (step.pGetFurtherNetlists() != nullptr)
            for (CJOBXnetlist& netlist : step.pMakeFurtherNetlists()->Records())
                Change(netlist);
    }
    void Change(CJOBXlayer& layer) const
    {
        ChangeList(layer);
        ChangeTexts(layer.m_arrAttributeTexts);
        for (CJOBXlayObj& feature : layer.GetFeatures()->Records())
            Change(feature);
    }
    // Most features have attributes without names, and share them; only those that change get a list of their own.
    void Change(CJOBXlayObj& feature) const
    {
        bool changes = false;
        for (int i = 0; i < feature.nGetPropertyCount() && !changes; ++i)
        {
            const CJOBXProperty& attribute = *feature.pGetProperty(i);
            changes = MayBeName(attribute) && Changed(attribute.m_sValue) != attribute.m_sValue;
        }
        if (changes)
            Change(*feature.GetPropertyArray());
        if (auto* const text = dynamic_cast<CJOBXlayObjText*>(&feature))
            text->SetText(Changed(text->GetText()));
        else if (auto* const barcode = dynamic_cast<CJOBXlayObjBarcode*>(&feature))
            ChangeText(barcode->m_sText);
    }
    void Change(CJOBXcomponents& file) const
    {
        ChangeList(file);
        ChangeTexts(file.m_arrAttributeTexts);
        for (CJOBXcmp& component : file.m_arrCmps.Records())
        {
            m_components.Replace(component.m_sName);
            m_parts.Replace(component.m_sPartName);
            Change(component.m_arrAttributes);
            for (CLProperty& property : component.m_arrProperties.Records())
                if (!HasPartNumber(property.m_sName) || !m_parts.Replace(property.m_sValue))
                    ChangeText(property.m_sValue);
            for (CJOBXcmpTop& top : component.m_arrTops.Records())
                ChangeTail(top);
        }
    }
    void Change(CJOBXdata& data) const
    {
        if (IsPath(data.m_sHeader))
            data.m_sHeader.Empty();
        ChangeTexts(data.m_arrAttributeTexts);
        for (CJOBXdataNet& net : data.m_arrNets.Records())
        {
            m_nets.Replace(net.m_sName);
            ChangeTail(net);
            Change(net.m_arrProperties);
            for (CJOBXSnt& subnet : net.m_arrSnts.Records())
                ChangeTail(subnet);
        }
        for (CJOBXdataPkg& package : data.m_arrPkgs.Records())
        {
            ChangeTail(package);
            Change(package.m_arrProperties);
        }
        for (CJOBXdataFgr& group : data.GetFeatureGroups()->Records())
        {
            ChangeTail(group);
            Change(group.m_arrProperties);
        }
    }
    void Change(CJOBXnetlist& netlist) const
    {
        for (CJOBXnet& net : netlist.m_arrNets.Records())
        {
            m_nets.Replace(net.m_sName);
            ChangeTail(net);
            for (CJOBXnetPt& point : net.m_arrPts.Records())
                ChangeTail(point);
        }
    }
    // The words of each line that are names.
    void ChangeWords(CStringArray& lines) const
    {
        for (INT_PTR i = 0; i < lines.GetSize(); ++i)
        {
            CString changed;
            int at = 0;
            for (CString word = lines[i].Tokenize(" \t", at); at >= 0; word = lines[i].Tokenize(" \t", at))
                changed += (changed.IsEmpty() ? CString() : CString(" ")) + Changed(word);
            lines[i] = changed;
        }
    }

    static void Empty(CJOBXmisc& info)
    {
        info.m_sSaveUser.Empty();
        info.m_sCreationDate.Empty();
        info.m_sSaveDate.Empty();
        for (CString* const text : {&info.m_sODBSource, &info.m_sSaveApp})
            if (IsPath(*text))
                text->Empty();
        if (info.pGetFurtherKeys() == nullptr)
            return;
        for (CJOBXProperty& key : info.pMakeFurtherKeys()->Records())
            if (ContainsOneOf(key.m_sName, {"USER", "DATE", "TIME", "PATH"}) || IsPath(key.m_sValue))
                key.m_sValue.Empty();
    }

    CJOBX& m_job;
    CNewNames m_nets{"NET"};
    CNewNames m_components{"COMP"};
    CNewNames m_parts{"PART"};
};
} // namespace

void AnonymiseJob(CJOBX& job)
{
    Guarded([&] { CAnonymity(job).Make(); });
}
