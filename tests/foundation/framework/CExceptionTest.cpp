#include "foundation/framework/CException.h"

#include "foundation/framework/CWnd.h"
#include "foundation/framework/Guarded.h"
#include "foundation/framework/RaisedPointer.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

namespace exception_test
{
namespace
{
// A host's own exception that counts how many of it live.
class HostException : public CException
{
public:
    explicit HostException(BOOL autoDelete) : CException(autoDelete) { ++s_nLive; }
    ~HostException() override { --s_nLive; }

    static int s_nLive;
};

int HostException::s_nLive = 0;

CString g_sShown;

int ShowInTest(CWnd* /*owner*/, LPCSTR text, LPCSTR /*caption*/, UINT style)
{
    g_sShown = text;
    return static_cast<int>(style) + 1;
}
} // namespace

TEST(Exception, Delete_FreesTheOnesThatWereMadeForTheThrow)
{
    auto* const made = new HostException(TRUE);
    EXPECT_EQ(HostException::s_nLive, 1);
    made->Delete();
    EXPECT_EQ(HostException::s_nLive, 0);
    HostException kept(FALSE);
    kept.Delete();
    EXPECT_EQ(HostException::s_nLive, 1);
}

TEST(Exception, Memory_AndInvalidArgumentExistOnce)
{
    const auto caught = [](void (*raise)()) -> CException*
    {
        try
        {
            raise();
        }
        catch (CException* error)
        {
            error->Delete();
            return error;
        }
        return nullptr;
    };
    EXPECT_EQ(caught([] { AfxThrowMemoryException(); }), caught([] { AfxThrowMemoryException(); }));
    EXPECT_EQ(caught([] { AfxThrowInvalidArgException(); }), caught([] { AfxThrowInvalidArgException(); }));
    EXPECT_NE(caught([] { AfxThrowMemoryException(); }), nullptr);
}

TEST(Exception, OwnMadeOnes_AreFreedToo)
{
    EXPECT_TRUE(Raises<CMemoryException>([] { throw new CMemoryException; }));
    EXPECT_TRUE(Raises<CInvalidArgException>([] { throw new CInvalidArgException; }));
}

TEST(Exception, CaughtAsBase_TellsItsKind)
{
    const std::pair<void (*)(), CRuntimeClass*> cases[] = {
        {[] { AfxThrowMemoryException(); }, CMemoryException::GetThisClass()},
        {[] { AfxThrowInvalidArgException(); }, CInvalidArgException::GetThisClass()},
        {[] { AfxThrowFileException(CFileException::diskFull); }, CFileException::GetThisClass()},
        {[] { AfxThrowArchiveException(CArchiveException::badIndex); }, CArchiveException::GetThisClass()},
    };
    for (const auto& [raise, kind] : cases)
        try
        {
            raise();
            ADD_FAILURE() << kind->m_lpszClassName;
        }
        catch (CException* error)
        {
            EXPECT_STREQ(error->GetRuntimeClass()->m_lpszClassName, kind->m_lpszClassName);
            EXPECT_TRUE(error->IsKindOf(kind));
            EXPECT_TRUE(error->IsKindOf(CException::GetThisClass()));
            for (const auto& other : cases)
                EXPECT_EQ(error->IsKindOf(other.second) != FALSE, other.second == kind);
            error->Delete();
        }
}

TEST(Exception, WithoutAClassOfItsOwnIsOfItsBases)
{
    const HostException error(FALSE);
    EXPECT_EQ(error.GetRuntimeClass(), CException::GetThisClass());
    EXPECT_TRUE(error.IsKindOf(CException::GetThisClass()));
    EXPECT_FALSE(error.IsKindOf(CFileException::GetThisClass()));
}

TEST(Exception, File_CarriesCauseSystemErrorAndName)
{
    try
    {
        AfxThrowFileException(CFileException::accessDenied, 13, "a/b");
    }
    catch (CFileException* error)
    {
        EXPECT_EQ(error->m_cause, CFileException::accessDenied);
        EXPECT_EQ(error->m_lOsError, 13);
        EXPECT_EQ(error->m_strFileName, "a/b");
        EXPECT_EQ(error->GetMessageText(), "a/b: access is denied");
        error->Delete();
    }
}

TEST(Exception, File_CauseFitsTheSystemsError)
{
    const std::pair<int, int> cases[] = {{0, CFileException::none},
                                         {ENOENT, CFileException::fileNotFound},
                                         {ENOTDIR, CFileException::badPath},
                                         {EINVAL, CFileException::badPath},
                                         {ENAMETOOLONG, CFileException::badPath},
                                         {ENFILE, CFileException::tooManyOpenFiles},
                                         {EPERM, CFileException::accessDenied},
                                         {EROFS, CFileException::accessDenied},
                                         {EFBIG, CFileException::diskFull},
                                         {EMFILE, CFileException::tooManyOpenFiles},
                                         {EACCES, CFileException::accessDenied},
                                         {EISDIR, CFileException::accessDenied},
                                         {EEXIST, CFileException::accessDenied},
                                         {EBADF, CFileException::invalidFile},
                                         {ENOSPC, CFileException::diskFull},
                                         {ESPIPE, CFileException::badSeek},
                                         {EIO, CFileException::hardIO},
                                         {EBUSY, CFileException::sharingViolation},
                                         {EDOM, CFileException::genericException}};
    for (const auto& [error, cause] : cases)
        EXPECT_EQ(CFileException::ErrnoToException(error), cause) << error;
}

TEST(Exception, Messages_NameEveryCauseAndUnknownOnes)
{
    for (int cause = CFileException::none; cause <= CFileException::endOfFile; ++cause)
        EXPECT_FALSE(CFileException(cause).GetMessageText().IsEmpty());
    for (int cause = CArchiveException::none; cause <= CArchiveException::badSchema; ++cause)
        EXPECT_FALSE(CArchiveException(cause).GetMessageText().IsEmpty());
    for (const int unknown : {-1, 99})
    {
        EXPECT_EQ(CFileException(unknown).GetMessageText(), "an error occurred");
        EXPECT_EQ(CArchiveException(unknown, "f").GetMessageText(), "f: an error occurred");
    }
    EXPECT_EQ(CMemoryException().GetMessageText(), "Out of memory.");
    EXPECT_EQ(CInvalidArgException().GetMessageText(), "An argument is not valid.");
}

TEST(Exception, GetErrorMessage_CutsAtTheBuffer)
{
    CMemoryException error;
    char buffer[8];
    UINT help = 9;
    EXPECT_TRUE(error.GetErrorMessage(buffer, sizeof(buffer), &help));
    EXPECT_STREQ(buffer, "Out of ");
    EXPECT_EQ(help, 0U);
    EXPECT_TRUE(error.GetErrorMessage(buffer, 1));
    EXPECT_STREQ(buffer, "");
    EXPECT_FALSE(error.GetErrorMessage(buffer, 0));
    EXPECT_FALSE(error.GetErrorMessage(nullptr, 8));
    EXPECT_FALSE(HostException(FALSE).GetErrorMessage(buffer, sizeof(buffer)));
    EXPECT_STREQ(buffer, "");
}

TEST(Exception, ReportError_ShowsTheReason)
{
    const JobxMessageBoxHandler before = SetMessageBoxHandler(ShowInTest);
    const int button = CFileException(CFileException::diskFull, -1, "x").ReportError(48);
    SetMessageBoxHandler(before);
    EXPECT_EQ(button, 49);
    EXPECT_EQ(g_sShown, "x: the disk is full");
}

TEST(Exception, Guard_TurnsTheCppLibrarysIntoTheFrameworks)
{
    EXPECT_EQ(Guarded([] { return 5; }), 5);
    EXPECT_TRUE(Raises<CMemoryException>([] { Guarded([] { throw std::bad_alloc(); }); }));
    EXPECT_TRUE(Raises<CMemoryException>([] { Guarded([] { std::string().resize(~std::size_t{0}); }); }));
    EXPECT_THROW(Guarded([] { throw 1; }), int);
}
} // namespace exception_test
