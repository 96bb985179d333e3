#include "foundation/framework/HostMacros.h"

#include "foundation/framework/CException.h"
#include "foundation/framework/CFile.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
class CHostBase : public CObject
{
    DECLARE_DYNAMIC(CHostBase)
};

class CHostMade : public CHostBase
{
    DECLARE_DYNCREATE(CHostMade)

protected:
    CHostMade() = default;
};

class CHostStored : public CHostBase
{
    DECLARE_SERIAL(CHostStored)
};

IMPLEMENT_DYNAMIC(CHostBase, CObject)
IMPLEMENT_DYNCREATE(CHostMade, CHostBase)
IMPLEMENT_SERIAL(CHostStored, CHostBase, 3)
} // namespace

TEST(HostMacros, NameCreateAndMarkClasses)
{
    CHostBase base;
    EXPECT_STREQ(base.GetRuntimeClass()->m_lpszClassName, "CHostBase");
    EXPECT_EQ(RUNTIME_CLASS(CHostBase)->CreateObject(), nullptr);
    EXPECT_FALSE(base.IsSerializable());

    const std::unique_ptr<CObject> made(RUNTIME_CLASS(CHostMade)->CreateObject());
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CHostBase)));
    EXPECT_FALSE(made->IsKindOf(RUNTIME_CLASS(CHostStored)));
    EXPECT_FALSE(made->IsSerializable());
    EXPECT_EQ(DYNAMIC_DOWNCAST(CHostMade, made.get()), made.get());
    EXPECT_EQ(DYNAMIC_DOWNCAST(CHostStored, made.get()), nullptr);
    EXPECT_EQ(STATIC_DOWNCAST(CHostBase, made.get()), made.get());

    const CHostStored stored;
    EXPECT_TRUE(stored.IsSerializable());
    EXPECT_EQ(stored.GetRuntimeClass()->m_wSchema, 3U);
    EXPECT_EQ(stored.GetRuntimeClass()->m_pBaseClass, RUNTIME_CLASS(CHostBase));
}

TEST(HostMacros, TellCaughtExceptionsApart)
{
    CString cause;
    try
    {
        const CFile file(_T(""), CFile::modeRead);
        ADD_FAILURE();
    }
    catch (CException* error)
    {
        if (error->IsKindOf(RUNTIME_CLASS(CFileException)))
            cause = _T("file");
        error->Delete();
    }
    EXPECT_EQ(cause, _T("file"));
}
