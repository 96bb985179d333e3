#include "reading/AttributeTypesReader.h"

#include "foundation/corekit/LzwEncoder.h"
#include "reading/RecordedMessages.h"
#include "reading/SystemAttributes.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
class AttributeTypes : public testing::Test
{
protected:
    CAttributeTypes Read()
    {
        const CReadingJob job{reading, CString(std::string_view(dir.Path()))};
        CMessageList messages(reading);
        CAttributeTypes types;
        ReadAttributeTypes({job, messages}, CString(std::string_view(dir.Path("misc"))), types);
        messages.Deliver();
        return types;
    }

    TempDir dir;
    RecordedMessages sink;
    CJOBXreading reading = sink.Reading();
};

TEST_F(AttributeTypes, ComeFromTheDefinitionsOfAllTheFiles)
{
    EXPECT_EQ(Read().Find(".smd"), nullptr);
    dir.Write("misc/USERATTR", "UNITS=INCH\n\nBOOLEAN {\n  NAME=_FLAG\n  DEF=NO\n}\n\noption {\n  NAME=_FINISH\n"
                               "  OPTIONS=HASL;SMTA; OSP;\n  DELETED=NO;NO;NO\n}\n");
    dir.Write("misc/sysattr.dfm", "FLOAT {\n NAME=.height\n}\nTEXT {\n NAME=_FLAG\n}\n");
    dir.Write("misc/sysattr.Z",
              EncodeLzw("INTEGER {\n NAME=.count\n}\nTEXT {\n NAME=.string\n}\nWHAT {\n NAME=.odd\n}\n"));
    dir.Write("misc/sysattr", "INTEGER {\n NAME=.count\n}\nTEXT {\n NAME=.string\n}\nWHAT {\n NAME=.odd\n}\n");
    const CAttributeTypes types = Read();
    const std::pair<const char*, JOBXattributeKind> expected[] = {
        {"_FLAG", JOBXattributeKind::Flag},   {"_FINISH", JOBXattributeKind::Option},
        {".height", JOBXattributeKind::Real}, {".count", JOBXattributeKind::Integer},
        {".string", JOBXattributeKind::Text}, {".odd", JOBXattributeKind::Unknown},
    };
    for (const auto& [name, kind] : expected)
    {
        ASSERT_NE(types.Find(name), nullptr) << name;
        EXPECT_EQ(types.Find(name)->kind, kind) << name;
    }
    EXPECT_THAT(types.Find("_FINISH")->options, ElementsAre("HASL", "SMTA", "OSP", ""));
    EXPECT_THAT(types.Find(".height")->options, IsEmpty());
    EXPECT_THAT(sink.lines, ElementsAre("misc/sysattr:7: note DEF003 The type \"WHAT\" is not known."));
}

TEST_F(AttributeTypes, MayHaveBlanksAroundTheirEqualsSigns)
{
    dir.Write("misc/sysattr", "OPTION {\n  NAME = .use\n  OPTIONS = a;b\n}\nREAL {\n  name\t=\t.height\n}\n");
    const CAttributeTypes types = Read();
    ASSERT_NE(types.Find(".use"), nullptr);
    EXPECT_THAT(types.Find(".use")->options, ElementsAre("a", "b"));
    ASSERT_NE(types.Find(".height"), nullptr);
    EXPECT_EQ(types.Find(".height")->kind, JOBXattributeKind::Real);
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(AttributeTypes, OfTheSystemAreKnownUnlessTheJobDefinesThem)
{
    dir.Write("misc/userattr", "TEXT {\n NAME=.drill\n}\n");
    CAttributeTypes types = Read();
    AddSystemAttributes(types);
    EXPECT_EQ(types.Find(".drill")->kind, JOBXattributeKind::Text);
    ASSERT_NE(types.Find(".pad_usage"), nullptr);
    EXPECT_EQ(types.Find(".pad_usage")->kind, JOBXattributeKind::Option);
    EXPECT_EQ(types.Find(".pad_usage")->options.at(1), "via");
    EXPECT_EQ(types.Find(".comp_mount_type")->options.at(2), "thmt");
    EXPECT_EQ(types.Find(".comp_height")->kind, JOBXattributeKind::Real);
    EXPECT_EQ(types.Find(".geometry")->kind, JOBXattributeKind::Text);
    EXPECT_EQ(types.Find(".smd"), nullptr);
}
} // namespace
