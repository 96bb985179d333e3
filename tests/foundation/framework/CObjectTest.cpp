#include "foundation/framework/CObject.h"

#include "foundation/framework/CArray.h"
#include "foundation/framework/CMemFile.h"
#include "foundation/framework/CStdioFile.h"

#include <gtest/gtest.h>

#include <memory>

namespace object_test
{
namespace
{
// A host's own class with a stored form.
class Part : public CObject
{
public:
    static CRuntimeClass* GetThisClass()
    {
        static CRuntimeClass theClass{"Part", static_cast<int>(sizeof(Part)), 1, []() -> CObject* { return new Part; },
                                      CObject::GetThisClass()};
        return &theClass;
    }
    CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    void Serialize(CArchive& archive) override
    {
        CObject::Serialize(archive);
        if (archive.IsStoring())
            archive << m_sName << m_nCount;
        else
            archive >> m_sName >> m_nCount;
    }

    CString m_sName;
    int m_nCount = 0;
};

class Plain : public CObject
{
};
} // namespace

TEST(Object, RuntimeClass_TellsNameSizeSchemaAndBase)
{
    const CRuntimeClass* const own = Part::GetThisClass();
    EXPECT_STREQ(own->m_lpszClassName, "Part");
    EXPECT_EQ(own->m_nObjectSize, static_cast<int>(sizeof(Part)));
    EXPECT_EQ(own->m_wSchema, 1U);
    EXPECT_EQ(own->m_pBaseClass, CObject::GetThisClass());
    EXPECT_STREQ(CObject::GetThisClass()->m_lpszClassName, "CObject");
    EXPECT_EQ(CObject::GetThisClass()->m_pBaseClass, nullptr);
}

TEST(Object, IsKindOf_GoesUpTheBases)
{
    const Part part;
    const Plain plain;
    EXPECT_TRUE(part.IsKindOf(Part::GetThisClass()));
    EXPECT_TRUE(part.IsKindOf(CObject::GetThisClass()));
    EXPECT_FALSE(part.IsKindOf(CFile::GetThisClass()));
    EXPECT_FALSE(part.IsKindOf(nullptr));
    EXPECT_FALSE(plain.IsKindOf(Part::GetThisClass()));
    const CStdioFile file;
    EXPECT_TRUE(file.IsKindOf(CFile::GetThisClass()));
    EXPECT_FALSE(file.IsKindOf(CMemFile::GetThisClass()));
}

TEST(Object, IsSerializable_NeedsASchema)
{
    EXPECT_TRUE(Part().IsSerializable());
    EXPECT_FALSE(Plain().IsSerializable());
    EXPECT_FALSE(CFile().IsSerializable());
}

TEST(Object, CreateObject_MakesOneOfTheClass)
{
    const std::unique_ptr<CObject> made(Part::GetThisClass()->CreateObject());
    ASSERT_NE(dynamic_cast<Part*>(made.get()), nullptr);
    EXPECT_EQ(CObject::GetThisClass()->CreateObject(), nullptr);
    for (CRuntimeClass* const file : {CFile::GetThisClass(), CMemFile::GetThisClass(), CStdioFile::GetThisClass()})
    {
        const std::unique_ptr<CObject> madeFile(file->CreateObject());
        ASSERT_NE(madeFile, nullptr);
        EXPECT_EQ(madeFile->GetRuntimeClass(), file);
    }
}

TEST(Object, Serialize_RoundTripsAHostsClass)
{
    Part part;
    part.m_sName = "R1";
    part.m_nCount = 7;
    CMemFile file;
    CArchive store(&file, CArchive::store);
    part.Serialize(store);
    store.Close();
    file.SeekToBegin();
    CArchive load(&file, CArchive::load);
    Part loaded;
    static_cast<CObject&>(loaded).Serialize(load);
    EXPECT_EQ(loaded.m_sName, "R1");
    EXPECT_EQ(loaded.m_nCount, 7);
}

TEST(Object, Serialize_OfTheBaseStoresNothing)
{
    CMemFile file;
    CArchive store(&file, CArchive::store);
    Plain().Serialize(store);
    store.Close();
    EXPECT_EQ(file.GetLength(), 0U);
    Plain().AssertValid();
}

TEST(Object, Array_IsAnObject)
{
    const CArray<int, int> array;
    EXPECT_TRUE(array.IsKindOf(CObject::GetThisClass()));
    EXPECT_STREQ(array.GetRuntimeClass()->m_lpszClassName, "CArray");
}
} // namespace object_test
