// Layers, steps, the features of a layer, and the job itself.
#include "edit/EditedKind.h"
#include "output/NearestName.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>

namespace
{
bool IsNamed(const CString& name, const std::string& wanted)
{
    return name.CompareNoCase(wanted.c_str()) == 0;
}

// Changes the attribute lists of an object; there may be several for one layer.
void SetAttribute(CJOBXattributed& owner, const std::string& name, const std::string& value)
{
    SetProperty(*owner.pMakeAttributeList()->GetAttributes(), name, value);
}

class LayerKind : public EditedKind
{
public:
    explicit LayerKind(CJOBX& job)
        : EditedKind(job, "layer", "a layer",
                     {"name", "type", "context", "polarity", "start", "end", "color", "addtype"}, {"attr"})
    {
    }
    std::vector<std::string> Names() const override
    {
        std::vector<std::string> names;
        for (const CJOBXmatrixLayer& row : Job().m_pMatrix->m_arrLayers.Records())
            names.emplace_back(row.m_sName.View());
        return names;
    }
    bool Has(const std::string& name) const override
    {
        return Job().m_pMatrix->m_arrLayers.GetMatrixLayer(name.c_str()) != nullptr || !ListsOf(name).empty();
    }
    void Set(const ChangeText& change, const std::string& name, const std::string& member) override
    {
        const auto [group, inGroup] = PartsOfMember(member);
        if (group == "attr")
        {
            for (CJOBXattributed* const owner : ListsFor(change, name))
                SetAttribute(*owner, inGroup, change.value);
            return;
        }
        CJOBXmatrixLayer* const row = Job().m_pMatrix->m_arrLayers.GetMatrixLayer(name.c_str());
        if (row == nullptr)
            RefuseChange(change, "only attributes of a layer belong to a step; leave the step out");
        if (member == "name")
            CheckDone(change, RenameLayer(Job(), name.c_str(), change.value.c_str()));
        else if (member == "start" || member == "end")
            SetSpan(change, member == "start" ? row->m_sStartName : row->m_sEndName);
        else
            SetWord(change, *row, member);
    }
    void Delete(const ChangeText& change, const std::string& name) override
    {
        if (Job().m_pMatrix->m_arrLayers.GetMatrixLayer(name.c_str()) == nullptr)
            RefuseChange(change, "a layer is deleted from all steps; leave the step out");
        CStringArray names;
        names.Add(name.c_str());
        CheckDone(change, DropLayers(Job(), names));
    }
    void DeleteMember(const ChangeText& change, const std::string& name, const std::string& member) override
    {
        for (CJOBXattributed* const owner : ListsFor(change, name))
            DeleteProperty(change, *owner->pMakeAttributeList()->GetAttributes(), PartsOfMember(member).second);
    }

private:
    // What has the attributes of the layer in its step, or in all.
    std::vector<CJOBXattributed*> ListsOf(std::string name) const
    {
        std::vector<CJOBXattributed*> lists;
        for (CJOBXstepObj* const step : StepsFor(Job(), name))
            if (CJOBXlayer* const layer = step->m_arrLayers.GetODBlayerFromName(name.c_str()))
                lists.push_back(layer);
            else
                for (CJOBXcomponents& file : step->m_arrComponents.Records())
                    if (IsNamed(file.m_sLayerName, name))
                        lists.push_back(&file);
        return lists;
    }
    std::vector<CJOBXattributed*> ListsFor(const ChangeText& change, const std::string& name) const
    {
        std::vector<CJOBXattributed*> lists = ListsOf(name);
        if (lists.empty())
            RefuseChange(change, "no step has a folder of that layer");
        return lists;
    }
    void SetSpan(const ChangeText& change, CString& end) const
    {
        const CJOBXmatrixLayer* const row = Job().m_pMatrix->m_arrLayers.GetMatrixLayer(change.value.c_str());
        if (row == nullptr && !change.value.empty())
            RefuseChange(change, fmt::format("there is no layer \"{}\"{}", Printable(change.value),
                                             DidYouMean(change.value, Names())));
        end = row == nullptr ? CString() : row->m_sName;
    }
    static void CheckWord(const ChangeText& change, const std::vector<std::string>& words)
    {
        if (std::find(words.begin(), words.end(), change.value) == words.end())
            RefuseChange(change, fmt::format("\"{}\" is not a word for it{}", Printable(change.value),
                                             DidYouMean(change.value, words)));
    }
    static void SetWord(const ChangeText& change, CJOBXmatrixLayer& row, const std::string& member)
    {
        if (member == "type")
            CheckWord(change, {"SIGNAL", "POWER_GROUND", "MIXED", "DIELECTRIC", "SOLDER_MASK", "SOLDER_PASTE",
                               "SILK_SCREEN", "COMPONENT", "DRILL", "ROUT", "MASK", "CONDUCTIVE_PASTE", "DOCUMENT"});
        else if (member == "context")
            CheckWord(change, {"BOARD", "MISC"});
        else if (member == "polarity")
            CheckWord(change, {"POSITIVE", "NEGATIVE"});
        CString& text = member == "type"       ? row.m_sType
                        : member == "context"  ? row.m_sContext
                        : member == "polarity" ? row.m_sPolarity
                        : member == "color"    ? row.m_sColor
                                               : row.m_sAddType;
        text = change.value.c_str();
    }
};

class FeaturesKind : public EditedKind
{
public:
    explicit FeaturesKind(CJOBX& job) : EditedKind(job, "features", "a layer with features", {}, {}) {}
    std::vector<std::string> Names() const override
    {
        std::vector<std::string> names;
        for (const CJOBXstepObj& step : Job().m_pSteps->m_arrSteps.Records())
            for (const CJOBXlayer& layer : step.m_arrLayers.Records())
                names.emplace_back(layer.m_sName.View());
        return names;
    }
    bool Has(const std::string& name) const override { return !Find(name).empty(); }
    void Set(const ChangeText& change, const std::string& /*name*/, const std::string& /*member*/) override
    {
        RefuseChange(change, "features can only be deleted");
    }
    void Delete(const ChangeText& change, const std::string& name) override
    {
        if (change.conditions.empty())
            RefuseChange(change, "it does not say which features, as in .pad_usage=1");
        __int64 deleted = 0;
        for (const auto& [step, layer] : Find(name))
        {
            CArrayN places;
            const CJOBXlayObjArray& features = *layer->GetFeatures();
            for (int i = 0; i < features.GetSize(); ++i)
                if (const CJOBXlayObj* const feature = features.GetAt(i);
                    feature != nullptr && MeetsAll(*feature, change.conditions))
                    places.Add(i);
            DeleteFeatures(*step, *layer, places);
            deleted += places.GetSize();
        }
        if (deleted == 0)
            RefuseChange(change, "no feature is like that");
    }
    void DeleteMember(const ChangeText& change, const std::string& /*name*/, const std::string& /*member*/) override
    {
        RefuseChange(change, "features have no members");
    }

private:
    std::vector<std::pair<CJOBXstepObj*, CJOBXlayer*>> Find(std::string name) const
    {
        std::vector<std::pair<CJOBXstepObj*, CJOBXlayer*>> found;
        for (CJOBXstepObj* const step : StepsFor(Job(), name))
            if (CJOBXlayer* const layer = step->m_arrLayers.GetODBlayerFromName(name.c_str()))
                found.emplace_back(step, layer);
        return found;
    }
    // The number of an option is as good as its word.
    static bool Meets(const CJOBXProperty& attribute, const ChangeText::Condition& condition)
    {
        return IsNamed(attribute.m_sName, condition.attribute) &&
               (!condition.value || IsNamed(attribute.m_sValue, *condition.value) ||
                (attribute.GetKind() == JOBXattributeKind::Option &&
                 std::to_string(attribute.m_nTextNumber) == *condition.value));
    }
    static bool MeetsAll(const CJOBXlayObj& feature, const std::vector<ChangeText::Condition>& conditions)
    {
        const auto isMet = [&](const ChangeText::Condition& condition)
        {
            for (int i = 0; i < feature.nGetPropertyCount(); ++i)
                if (const CJOBXProperty* const attribute = feature.pGetProperty(i);
                    attribute != nullptr && Meets(*attribute, condition))
                    return true;
            return false;
        };
        return std::all_of(conditions.begin(), conditions.end(), isMet);
    }
};

class StepKind : public EditedKind
{
public:
    explicit StepKind(CJOBX& job)
        : EditedKind(job, "step", "a step", {"name", "x_datum", "y_datum", "x_origin", "y_origin"}, {"attr"})
    {
    }
    std::vector<std::string> Names() const override
    {
        std::vector<std::string> names;
        for (const CJOBXstepObj& step : Job().m_pSteps->m_arrSteps.Records())
            names.emplace_back(step.m_sName.View());
        return names;
    }
    bool Has(const std::string& name) const override { return Find(name) != nullptr; }
    void Set(const ChangeText& change, const std::string& name, const std::string& member) override
    {
        CJOBXstepObj& step = *Find(name);
        const auto [group, inGroup] = PartsOfMember(member);
        if (group == "attr")
            SetAttribute(step, inGroup, change.value);
        else if (member == "name")
            CheckDone(change, RenameStep(Job(), name.c_str(), change.value.c_str()));
        else
        {
            const double number = NumberFor(change, member);
            CPointD& point = member.ends_with("datum") ? step.GetHeader()->m_ptDatum : step.GetHeader()->m_ptOrigin;
            if (member.starts_with('x'))
                point.SetX(number);
            else
                point.SetY(number);
        }
    }
    void Delete(const ChangeText& change, const std::string& name) override
    {
        CStringArray others;
        for (const CJOBXstepObj& step : Job().m_pSteps->m_arrSteps.Records())
            if (!IsNamed(step.m_sName, name))
                others.Add(step.m_sName);
        CheckDone(change, KeepSteps(Job(), others));
    }
    void DeleteMember(const ChangeText& change, const std::string& name, const std::string& member) override
    {
        DeleteProperty(change, *Find(name)->pMakeAttributeList()->GetAttributes(), PartsOfMember(member).second);
    }

private:
    CJOBXstepObj* Find(const std::string& name) const
    {
        for (CJOBXstepObj& step : Job().m_pSteps->m_arrSteps.Records())
            if (IsNamed(step.m_sName, name))
                return &step;
        return nullptr;
    }
};

struct InfoText
{
    std::string_view key;
    CString CJOBXmisc::*text;
};
constexpr std::array<InfoText, 6> kInfoTexts = {{{"JOB_NAME", &CJOBXmisc::m_sJobName},
                                                 {"ODB_SOURCE", &CJOBXmisc::m_sODBSource},
                                                 {"CREATION_DATE", &CJOBXmisc::m_sCreationDate},
                                                 {"SAVE_DATE", &CJOBXmisc::m_sSaveDate},
                                                 {"SAVE_APP", &CJOBXmisc::m_sSaveApp},
                                                 {"SAVE_USER", &CJOBXmisc::m_sSaveUser}}};

class JobKind : public EditedKind
{
public:
    explicit JobKind(CJOBX& job) : EditedKind(job, "job", "a job", {"name"}, {"info", "attr"}) {}
    std::vector<std::string> Names() const override { return {}; }
    bool Has(const std::string& /*name*/) const override { return true; }
    void Set(const ChangeText& change, const std::string& /*name*/, const std::string& member) override
    {
        const auto [group, inGroup] = PartsOfMember(member);
        if (group == "attr")
            SetAttribute(*Job().m_pMisc, inGroup, change.value);
        else if (group == "info")
            InfoFor(change, inGroup) = change.value.c_str();
        else
            CheckDone(change, RenameJob(Job(), change.value.c_str()));
    }
    void Delete(const ChangeText& change, const std::string& /*name*/) override
    {
        RefuseChange(change, "a job cannot be deleted");
    }
    void DeleteMember(const ChangeText& change, const std::string& /*name*/, const std::string& member) override
    {
        const auto [group, inGroup] = PartsOfMember(member);
        DeleteProperty(change,
                       group == "attr" ? *Job().m_pMisc->pMakeAttributeList()->GetAttributes()
                                       : *Job().m_pMisc->pMakeFurtherKeys(),
                       inGroup);
    }

private:
    // The text of that key.
    CString& InfoFor(const ChangeText& change, const std::string& key) const
    {
        CJOBXmisc& info = *Job().m_pMisc;
        std::vector<std::string> keys;
        for (const InfoText& each : kInfoTexts)
        {
            if (CString(each.key).CompareNoCase(key.c_str()) == 0)
                return info.*each.text;
            keys.emplace_back(each.key);
        }
        for (CJOBXProperty& each : info.pMakeFurtherKeys()->Records())
        {
            if (IsNamed(each.m_sName, key))
                return each.m_sValue;
            keys.emplace_back(each.m_sName.View());
        }
        RefuseChange(change, fmt::format("the information has no \"{}\"{}", Printable(key), DidYouMean(key, keys)));
    }
};
} // namespace

std::unique_ptr<EditedKind> MakeLayerKind(CJOBX& job)
{
    return std::make_unique<LayerKind>(job);
}

std::unique_ptr<EditedKind> MakeFeaturesKind(CJOBX& job)
{
    return std::make_unique<FeaturesKind>(job);
}

std::unique_ptr<EditedKind> MakeStepKind(CJOBX& job)
{
    return std::make_unique<StepKind>(job);
}

std::unique_ptr<EditedKind> MakeJobKind(CJOBX& job)
{
    return std::make_unique<JobKind>(job);
}
