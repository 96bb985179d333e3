// The compact model that is made from a step of a job.
#include "compact/CompactMembers.h"
#include "compact/CompactModel.h"
#include "compact/RecordPairs.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace
{
constexpr int kFirstValue = 1000;

// Gives every member of the main model a value that nothing else has, and every list two records of each class.
class MainFiller
{
public:
    template <class A, class B>
    void operator()(A& a, const B& /*b*/)
    {
        Set(a);
    }
    template <class Field, class A, class B>
    void Value(A& a, const B& /*b*/)
    {
        if constexpr (Field::kKind == jobx::FieldKind::Records)
            Set(Field::Ref(a));
        else
        {
            std::remove_cvref_t<decltype(Field::Get(a))> value{};
            Set(value);
            Field::Set(a, value);
        }
    }
    template <class A, class B, class Walk>
    void List(CExPtrArray<A*, A*>& a, const COwningPtrArray<B>& /*b*/, Walk walk)
    {
        a.Add(new A);
        if constexpr (requires { typename jobx::CompactFields<B>::Classes; })
            jobx::CompactFields<B>::Classes::ForEach([&]<class Class>(Class*)
                                                     { a.Add(new typename jobx::CompactFields<Class>::Main); });
        else
            a.Add(new A);
        jobx::ForEachRecord(a,
                            [&](A& record)
                            {
                                B unused;
                                walk(record, unused);
                            });
    }
    template <class B, class Base>
    B* CompactAs(Base& /*b*/)
    {
        static B unused;
        return &unused;
    }

    CString NextText()
    {
        CString text;
        text.Format("value %d", ++m_last);
        return text;
    }

private:
    void Set(CString& value) { value = NextText(); }
    void Set(int& value) { value = ++m_last; }
    void Set(__int64& value) { value = ++m_last; }
    void Set(double& value) { value = ++m_last + 0.25; }
    void Set(CPointD& value)
    {
        Set(value.x);
        Set(value.y);
    }
    void Set(CPointN& value)
    {
        Set(value.x);
        Set(value.y);
    }
    void Set(CStringArray& list)
    {
        for (int i = 0; i < 2; ++i)
            list.Add(NextText());
    }
    void Set(CArrayN& list)
    {
        for (int i = 0; i < 2; ++i)
            list.Add(++m_last);
    }
    void Set(CJOBXPropertyArray& list)
    {
        for (int i = 0; i < 2; ++i)
        {
            auto* const property = new CJOBXProperty;
            list.Add(property);
            Set(property->m_sName);
            Set(property->m_nNumber);
            Set(property->m_sValue);
            Set(property->m_nTextNumber);
            Set(property->m_arrFurtherValues);
        }
    }
    void Set(CLPropertyArray& list)
    {
        for (int i = 0; i < 2; ++i)
            list.Add(new CLProperty(NextText(), NextText()));
    }

    int m_last = kFirstValue;
};

// Expects every member of the compact model to equal that of the main model, and counts the records.
class Comparer
{
public:
    template <class A, class B>
    void operator()(const A& a, const B& b)
    {
        EXPECT_TRUE(a == b);
    }
    void operator()(const CArrayN& a, const CArrayN& b) { EXPECT_TRUE(a.GetSize() == b.GetSize() && Equal(a, b)); }
    void operator()(const CJOBXPropertyArray& a, const CJOBXPropertyArray& b)
    {
        ASSERT_EQ(a.GetSize(), b.GetSize());
        for (INT_PTR i = 0; i < a.GetSize(); ++i)
            Same(*a.GetAt(i), *b.GetAt(i));
    }
    void operator()(const jobx::FeatureProperties::Shared& a, const CJOBXPropertyArray& b)
    {
        ASSERT_EQ(a.GetSize(), b.GetSize());
        for (INT_PTR i = 0; i < a.GetSize(); ++i)
            Same(*a.GetAt(i), *b.GetAt(i));
    }
    template <class Field, class A, class B>
    void Value(const A& a, const B& b)
    {
        (*this)(Field::Get(a), b);
    }
    template <class A, class B, class Walk>
    void List(CExPtrArray<A*, A*>& a, COwningPtrArray<B>& b, Walk walk)
    {
        ASSERT_EQ(a.GetSize(), b.GetSize());
        for (INT_PTR i = 0; i < a.GetSize(); ++i)
        {
            ++records;
            walk(*a.GetAt(i), *b.GetAt(i));
        }
    }
    template <class B, class Base>
    B* CompactAs(Base& b)
    {
        EXPECT_EQ(typeid(b), typeid(B));
        return dynamic_cast<B*>(&b);
    }

    long long records = 0;

private:
    static bool Equal(const CArrayN& a, const CArrayN& b)
    {
        return std::equal(a.GetData(), a.GetData() + a.GetSize(), b.GetData());
    }
    static void Same(const CJOBXProperty& a, const CJOBXProperty& b)
    {
        EXPECT_TRUE(a.m_sName == b.m_sName && a.m_nNumber == b.m_nNumber && a.m_sValue == b.m_sValue &&
                    a.m_nTextNumber == b.m_nTextNumber && a.m_arrFurtherValues == b.m_arrFurtherValues);
    }
};

// Fails for every member that still has the value it starts with.
class DefaultsFinder : public MemberVisitor
{
public:
    void Real(double& value, bool /*isLength*/) override
    {
        // Rescale factors are the only numbers that begin at 1, and stay there.
        EXPECT_TRUE(value > kFirstValue || value == 1.0) << value;
    }
    void Integer(long long value) override
    {
        // Counts of lists and parts, or values; 0 and -1 are neither.
        EXPECT_TRUE(value > kFirstValue || (value >= 1 && value <= 7)) << value;
    }
    void Text(CString& value) override
    {
        EXPECT_TRUE(value.View().starts_with("value ") || value == "UNITS TEXT") << value.View();
        ++texts;
    }

    int texts = 0;
};

CJOBXstepObj* AddStep(CJOBX& job, const char* name)
{
    job.m_pSteps->m_arrSteps.Add(new CJOBXstepObj);
    CJOBXstepObj* const step = job.m_pSteps->m_arrSteps.GetLastElement();
    step->m_sName = name;
    return step;
}

CJOBXcomponents* AddFile(CJOBXstepObj& step, const char* layerName)
{
    step.m_arrComponents.Add(new CJOBXcomponents);
    CJOBXcomponents* const file = step.m_arrComponents.GetLastElement();
    file->m_sLayerName = layerName;
    return file;
}

void Walk(CJOBX& job, CJOBXstepObj& step, CODB& model, Comparer& comparer)
{
    RecordPairs<Comparer> pairs(comparer);
    pairs.Walk(job, model);
    ASSERT_NE(model.m_pSingleLayer, nullptr);
    ASSERT_EQ(model.m_arrStephdrs.GetSize(), 1);
    pairs.Walk(step, model, *model.m_pSingleLayer, *model.m_arrStephdrs.GetAt(0));
}

// A job of one step in which every member has a value of its own.
void FillJob(CJOBX& job)
{
    CJOBXstepObj& step = *AddStep(job, "pcb");
    MainFiller filler;
    RecordPairs<MainFiller> pairs(filler);
    CODB unused;
    CODBlayer unusedLayer;
    CODBstephdr unusedHeader;
    pairs.Walk(job, unused);
    pairs.Walk(step, unused, unusedLayer, unusedHeader);
    CJOBXcomponents& file = *AddFile(step, filler.NextText());
    CODBcomponents& part = *unused.m_pComponents;
    pairs.List(file.m_arrCmps, part.m_arrCmps);
    filler(file.m_arrAttributeNames, 0);
    filler(file.m_arrAttributeNameNumbers, 0);
    filler(file.m_arrAttributeTexts, 0);
    filler(file.m_arrAttributeTextNumbers, 0);
    filler(file.m_sUnits, 0);
    filler(file.m_sRelativePath, 0);
    step.GetProfile()->m_sUnits = "units text";
    for (INT_PTR i = 0; i < step.m_arrLayers.GetSize(); ++i)
        step.m_arrLayers.GetAt(i)->m_sUnits = "units text";
    for (INT_PTR i = 0; i < job.m_pSpecialSymbols->GetSize(); ++i)
        job.m_pSpecialSymbols->GetAt(i)->GetLayer()->m_sUnits = "units text";
}

// Components of several files, in their order; their attributes' numbers may be others.
void ExpectSameComponents(CJOBXstepObj& step, CODBcomponents& part)
{
    INT_PTR next = 0;
    for (INT_PTR i = 0; i < step.m_arrComponents.GetSize(); ++i)
    {
        CJOBXcmpArray& components = step.m_arrComponents.GetAt(i)->m_arrCmps;
        for (INT_PTR k = 0; k < components.GetSize(); ++k, ++next)
        {
            ASSERT_LT(next, part.m_arrCmps.GetSize());
            const CJOBXcmp& a = *components.GetAt(k);
            const CODBcmp& b = *part.m_arrCmps.GetAt(next);
            EXPECT_TRUE(a.m_nNumber == b.m_nNumber && a.m_sName == b.m_sName && a.m_sPartName == b.m_sPartName &&
                        a.m_ptLocation == b.m_ptLocation && a.m_nPkgRef == b.m_nPkgRef &&
                        a.m_arrTops.GetSize() == b.m_arrToes.GetSize() &&
                        a.m_arrProperties.GetSize() == b.m_arrProperties.GetSize());
            ASSERT_EQ(a.m_arrAttributes.GetSize(), b.m_arrAttributes.GetSize());
            for (INT_PTR n = 0; n < a.m_arrAttributes.GetSize(); ++n)
            {
                const CJOBXProperty& mine = *b.m_arrAttributes.GetAt(n);
                EXPECT_EQ(a.m_arrAttributes.GetAt(n)->m_sName, mine.m_sName);
                EXPECT_EQ(a.m_arrAttributes.GetAt(n)->m_sValue, mine.m_sValue);
            }
        }
    }
    EXPECT_EQ(next, part.m_arrCmps.GetSize());
}

// Compares every record of every step of a job that is read; answers how many there were beside the components.
long long CompareJob(const std::string& path)
{
    CJOBX job;
    EXPECT_EQ(job.ParseODBOfMFC(path.c_str()), 1);
    Comparer comparer;
    CJOBXstepObjArray& steps = job.m_pSteps->m_arrSteps;
    EXPECT_GT(steps.GetSize(), 0);
    for (INT_PTR i = 0; i < steps.GetSize(); ++i)
    {
        SCOPED_TRACE(steps.GetAt(i)->m_sName.GetString());
        const std::unique_ptr<CODB> model(pMakeCompactModel(job, steps.GetAt(i)));
        Walk(job, *steps.GetAt(i), *model, comparer);
        ExpectSameComponents(*steps.GetAt(i), *model->m_pComponents);
    }
    return comparer.records;
}

CStringArray Texts(std::initializer_list<const char*> texts)
{
    CStringArray list;
    for (const char* const text : texts)
        list.Add(text);
    return list;
}

std::vector<int> NumbersOf(const CArrayN& list)
{
    return {list.GetData(), list.GetData() + list.GetSize()};
}

void AddAttributes(CJOBXcmp& component, std::initializer_list<std::pair<int, int>> numbers)
{
    for (const auto& [number, textNumber] : numbers)
    {
        component.m_arrAttributes.Add(new CJOBXProperty);
        component.m_arrAttributes.GetLastElement()->m_nNumber = number;
        component.m_arrAttributes.GetLastElement()->m_nTextNumber = textNumber;
    }
}

std::vector<std::pair<int, int>> AttributesOf(const CODBcmp& component)
{
    std::vector<std::pair<int, int>> numbers;
    for (INT_PTR i = 0; i < component.m_arrAttributes.GetSize(); ++i)
        numbers.emplace_back(component.m_arrAttributes.GetAt(i)->m_nNumber,
                             component.m_arrAttributes.GetAt(i)->m_nTextNumber);
    return numbers;
}
} // namespace

TEST(CompactModelOfStep, CarriesEveryMemberOfEveryRecord)
{
    CJOBX job;
    FillJob(job);
    CJOBXstepObj& step = *job.m_pSteps->m_arrSteps.GetAt(0);
    const std::unique_ptr<CODB> model(pMakeCompactModel(job, &step));
    ASSERT_NE(model, nullptr);

    Comparer comparer;
    Walk(job, step, *model, comparer);
    const CJOBXcomponents& file = *step.m_arrComponents.GetAt(0);
    CODBcomponents& part = *model->m_pComponents;
    RecordPairs<Comparer>(comparer).List(step.m_arrComponents.GetAt(0)->m_arrCmps, part.m_arrCmps);
    for (INT_PTR i = 0; i < part.m_arrCmps.GetSize(); ++i)
        EXPECT_EQ(part.m_arrCmps.GetAt(i)->m_nSide, file.m_arrCmps.GetAt(i)->m_nSide);
    comparer(file.m_arrAttributeNames, part.m_arrAttributeNames);
    comparer(file.m_arrAttributeNameNumbers, part.m_arrAttributeNameNumbers);
    comparer(file.m_arrAttributeTexts, part.m_arrAttributeTexts);
    comparer(file.m_arrAttributeTextNumbers, part.m_arrAttributeTextNumbers);
    EXPECT_EQ(part.m_sUnits, file.m_sUnits);
    EXPECT_EQ(part.m_sLayerName, file.m_sLayerName);
    EXPECT_EQ(part.m_sRelativePath, file.m_sRelativePath);
    EXPECT_GT(comparer.records, 150);
}

TEST(CompactModelOfStep, LeavesNoMemberAtItsDefault)
{
    CJOBX job;
    FillJob(job);
    const std::unique_ptr<CODB> model(pMakeCompactModel(job, "pcb"));
    ASSERT_NE(model, nullptr);
    DefaultsFinder finder;
    Visit(finder, *model);
    EXPECT_GT(finder.texts, 500);
}

TEST(CompactModelOfStep, IsNullForANullStepAndAnUnknownName)
{
    CJOBX job;
    EXPECT_EQ(pMakeCompactModel(job, nullptr), nullptr);
    EXPECT_EQ(pMakeCompactModel(job, "pcb"), nullptr);
    AddStep(job, "pcb");
    EXPECT_EQ(pMakeCompactModel(job, "panel"), nullptr);
    EXPECT_EQ(pMakeCompactModel(job, ""), nullptr);
}

TEST(CompactModelOfStep, FindsTheFirstStepOfTheNameWhateverItsLetterCase)
{
    CJOBX job;
    AddStep(job, "other")->GetHeader()->m_sTopActive = "0";
    job.m_pSteps->m_arrSteps.Add(nullptr);
    AddStep(job, "PCB")->GetHeader()->m_sTopActive = "1";
    AddStep(job, "pcb")->GetHeader()->m_sTopActive = "2";
    const std::unique_ptr<CODB> model(pMakeCompactModel(job, "pcb"));
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->m_arrStephdrs.GetAt(0)->m_sTopActive, "1");
}

TEST(CompactModelOfStep, HasThePartsOfAnEmptyStep)
{
    CJOBX job;
    AddStep(job, "empty");
    const std::unique_ptr<CODB> model(pMakeCompactModel(job, "empty"));
    ASSERT_NE(model, nullptr);
    EXPECT_NE(model->m_pSingleLayer, nullptr);
    EXPECT_NE(model->m_pComponents, nullptr);
    EXPECT_EQ(model->m_pComponents->m_sUnits, "INCH");
    EXPECT_NE(model->m_pData, nullptr);
    EXPECT_EQ(model->m_arrStephdrs.GetSize(), 1);
    EXPECT_EQ(model->m_arrLayers.GetSize(), 0);
}

TEST(CompactModelOfStep, TurnsUnitsTextsIntoThoseThatTheCompactModelKnows)
{
    const struct
    {
        const char* text;
        const char* units;
        double factor;
    } cases[] = {{"INCH", "INCH", 1.0},
                 {"MM", "MM", 1.0 / 25.4},
                 {"UNITS=MM", "MM", 1.0 / 25.4},
                 {"UNITS=UNITS=MM", "MM", 1.0 / 25.4},
                 {"units=mm", "MM", 1.0 / 25.4},
                 {"UNITS= mm ", "MM", 1.0 / 25.4},
                 {"mil", "MIL", 0.001},
                 {"UNITS=INCH", "INCH", 1.0},
                 {"UNITS=", "", 1.0},
                 {"", "", 1.0},
                 {"furlong", "FURLONG", 1.0}};
    for (const auto& [text, units, factor] : cases)
    {
        SCOPED_TRACE(text);
        CJOBX job;
        CJOBXstepObj& step = *AddStep(job, "pcb");
        step.GetProfile()->m_sUnits = text;
        step.m_arrLayers.Add(new CJOBXlayer);
        step.m_arrLayers.GetAt(0)->m_sUnits = text;
        job.m_pSpecialSymbols->Add(new CJOBXSpecialSymbol);
        job.m_pSpecialSymbols->GetAt(0)->GetLayer()->m_sUnits = text;
        const std::unique_ptr<CODB> model(pMakeCompactModel(job, &step));
        EXPECT_EQ(model->m_pSingleLayer->m_sUnits, units);
        EXPECT_EQ(model->m_arrLayers.GetAt(0)->m_sUnits, units);
        EXPECT_EQ(model->m_arrSpecialSymbols.GetAt(0)->m_sUnits, units);
        model->vChangeUnit(0);
        EXPECT_EQ(model->m_pSingleLayer->m_dRescaleFactor, factor);
        EXPECT_EQ(model->m_arrLayers.GetAt(0)->m_dRescaleFactor, factor);
        EXPECT_EQ(model->m_arrSpecialSymbols.GetAt(0)->m_dRescaleFactor, factor);
    }
}

TEST(CompactModelOfStep, LeavesNullEntriesOut)
{
    CJOBX job;
    CJOBXstepObj& step = *AddStep(job, "pcb");
    step.m_arrLayers.Add(nullptr);
    step.m_arrLayers.Add(new CJOBXlayer);
    step.m_arrLayers.GetAt(1)->GetFeatures()->Add(nullptr);
    step.m_arrLayers.GetAt(1)->GetFeatures()->Add(new CJOBXlayObjPad);
    step.m_arrLayers.GetAt(1)->GetFeatures()->GetAt(1)->GetPropertyArray()->Add(nullptr);
    step.m_arrComponents.Add(nullptr);
    step.GetNetlist()->m_arrNets.Add(nullptr);
    const std::unique_ptr<CODB> model(pMakeCompactModel(job, &step));
    ASSERT_EQ(model->m_arrLayers.GetSize(), 1);
    ASSERT_EQ(model->m_arrLayers.GetAt(0)->m_arrFeatures.GetSize(), 1);
    EXPECT_EQ(model->m_arrLayers.GetAt(0)->m_arrFeatures.GetAt(0)->m_arrProperties.GetSize(), 0);
    EXPECT_EQ(model->m_pComponents->m_arrCmps.GetSize(), 0);
    EXPECT_EQ(model->m_netlist.m_arrNets.GetSize(), 0);
}

TEST(CompactModelOfStep, JoinsTheComponentsFilesAndTellsTheirSides)
{
    CJOBX job;
    CJOBXstepObj& step = *AddStep(job, "pcb");
    for (const char* const layer : {"COMP_+_BOT", "comp_+_top", "other"})
    {
        CJOBXcomponents* const file = AddFile(step, layer);
        file->m_sRelativePath = layer;
        file->m_arrCmps.Add(new CJOBXcmp);
        file->m_arrCmps.GetAt(0)->m_sName = layer;
    }
    step.m_arrComponents.GetAt(1)->m_arrCmps.Add(new CJOBXcmp);
    step.m_arrComponents.GetAt(1)->m_arrCmps.GetAt(1)->m_nSide = 5;
    const std::unique_ptr<CODB> model(pMakeCompactModel(job, &step));
    const CODBcmpArray& components = model->m_pComponents->m_arrCmps;
    ASSERT_EQ(components.GetSize(), 4);
    EXPECT_EQ(components.GetAt(0)->m_sName, "COMP_+_BOT");
    EXPECT_EQ(components.GetAt(0)->m_nSide, 0);
    EXPECT_EQ(components.GetAt(1)->m_sName, "comp_+_top");
    EXPECT_EQ(components.GetAt(1)->m_nSide, 1);
    EXPECT_EQ(components.GetAt(2)->m_nSide, 5);
    EXPECT_EQ(components.GetAt(3)->m_nSide, -1);
    EXPECT_EQ(model->m_pComponents->m_sLayerName, "");
    EXPECT_EQ(model->m_pComponents->m_sRelativePath, "");
}

TEST(CompactModelOfStep, JoinsAttributeTablesUnderFreeNumbers)
{
    CJOBX job;
    CJOBXstepObj& step = *AddStep(job, "pcb");
    CJOBXcomponents* const top = AddFile(step, "comp_+_top");
    top->m_arrAttributeNames = Texts({".side", ".height", ".side"});
    for (const int number : {0, 1, 0})
        top->m_arrAttributeNameNumbers.Add(number);
    CJOBXcomponents* const bottom = AddFile(step, "comp_+_bot");
    bottom->m_arrAttributeNames = Texts({".height", ".value", ".new", ".ignored"});
    for (const int number : {0, 1, 7, 7})
        bottom->m_arrAttributeNameNumbers.Add(number);
    bottom->m_arrAttributeTexts = Texts({"text"});
    bottom->m_arrAttributeTextNumbers.Add(3);
    for (CJOBXcomponents* const file : {top, bottom})
    {
        file->m_arrCmps.Add(new CJOBXcmp);
        AddAttributes(*file->m_arrCmps.GetAt(0), {{0, -1}, {1, 3}, {7, -1}, {99, 99}});
    }
    const std::unique_ptr<CODB> model(pMakeCompactModel(job, &step));
    const CODBcomponents& part = *model->m_pComponents;
    EXPECT_TRUE(part.m_arrAttributeNames == Texts({".side", ".height", ".side", ".value", ".new"}));
    EXPECT_EQ(NumbersOf(part.m_arrAttributeNameNumbers), (std::vector<int>{0, 1, 0, 2, 7}));
    EXPECT_TRUE(part.m_arrAttributeTexts == Texts({"text"}));
    EXPECT_EQ(NumbersOf(part.m_arrAttributeTextNumbers), (std::vector<int>{3}));
    using Numbers = std::vector<std::pair<int, int>>;
    EXPECT_EQ(AttributesOf(*part.m_arrCmps.GetAt(0)), (Numbers{{0, -1}, {1, 3}, {7, -1}, {99, 99}}));
    EXPECT_EQ(AttributesOf(*part.m_arrCmps.GetAt(1)), (Numbers{{1, -1}, {2, 3}, {7, -1}, {99, 99}}));
}

TEST(CompactModelOfStep, AttributesFollowTheirTextsIntoTheJoinedTable)
{
    CJOBX job;
    CJOBXstepObj& step = *AddStep(job, "pcb");
    for (const char* const text : {"from the top", "from the bottom"})
    {
        CJOBXcomponents* const file = AddFile(step, step.m_arrComponents.GetSize() == 0 ? "comp_+_top" : "comp_+_bot");
        file->m_arrAttributeTexts = Texts({text});
        file->m_arrAttributeTextNumbers.Add(3);
        file->m_arrCmps.Add(new CJOBXcmp);
        AddAttributes(*file->m_arrCmps.GetAt(0), {{-1, 3}});
    }
    const std::unique_ptr<CODB> model(pMakeCompactModel(job, &step));
    const CODBcomponents& part = *model->m_pComponents;
    EXPECT_TRUE(part.m_arrAttributeTexts == Texts({"from the top", "from the bottom"}));
    EXPECT_EQ(NumbersOf(part.m_arrAttributeTextNumbers), (std::vector<int>{3, 0}));
    EXPECT_EQ(AttributesOf(*part.m_arrCmps.GetAt(0)), (std::vector<std::pair<int, int>>{{-1, 3}}));
    EXPECT_EQ(AttributesOf(*part.m_arrCmps.GetAt(1)), (std::vector<std::pair<int, int>>{{-1, 0}}));
}

TEST(CompactModelOfStep, SharesNothingWithTheJob)
{
    auto job = std::make_unique<CJOBX>();
    FillJob(*job);
    const std::unique_ptr<CODB> model(pMakeCompactModel(*job, "pcb"));
    const Members before = MembersOf(*model);
    job->UnitConvert(2.0);
    EXPECT_EQ(MembersOf(*model), before);
    job.reset();
    EXPECT_EQ(MembersOf(*model), before);
}

TEST(CompactModelOfStep, ChangingItLeavesTheJobAlone)
{
    CJOBX job;
    FillJob(job);
    CJOBXstepObj& step = *job.m_pSteps->m_arrSteps.GetAt(0);
    step.m_arrLayers.GetAt(0)->m_sUnits = "MM";
    const std::unique_ptr<CODB> model(pMakeCompactModel(job, &step));
    model->vChangeUnit(0);
    model->m_netlist.vRescale(3.0);
    model->m_arrLayers.GetAt(0)->m_sName = "changed";
    const std::unique_ptr<CODB> again(pMakeCompactModel(job, &step));
    Comparer comparer;
    Walk(job, step, *again, comparer);
    EXPECT_NE(MembersOf(*model), MembersOf(*again));
}

TEST(CompactModelOfStep, EqualsTheSampleRecordByRecord)
{
    const TempDir directory;
    std::filesystem::copy(SamplesDir() + "/blinker", directory.Path("blinker"),
                          std::filesystem::copy_options::recursive);
    EXPECT_GT(CompareJob(directory.Path("blinker")), 1000);
}

TEST(CompactModelOfStep, EqualsRealJobsRecordByRecord)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    for (const char* const name : {"beagleboneblack", "flat_hierarchy"})
    {
        SCOPED_TRACE(name);
        EXPECT_GT(CompareJob(jobs + "/" + name), 1000);
    }
}
