// The classes as a host's code uses them: exceptions caught as pointers and deleted, records stored through an archive,
// lists walked by index.
#include "foundation/framework/CArchive.h"
#include "foundation/framework/CArray.h"
#include "foundation/framework/CMemFile.h"
#include "foundation/framework/CStdioFile.h"
#include "foundation/framework/CStringArray.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace
{
class CPart : public CObject
{
public:
    CPart() = default;
    CPart(LPCTSTR lpszName, int nCount) : m_strName(lpszName), m_nCount(nCount) {}

    void Serialize(CArchive& ar) override
    {
        CObject::Serialize(ar);
        if (ar.IsStoring())
        {
            ar << m_strName;
            ar << m_nCount;
        }
        else
        {
            ar >> m_strName;
            ar >> m_nCount;
        }
    }

    CString m_strName;
    int m_nCount = 0;
};

class CPartList : public CArray<CPart*, CPart*>
{
public:
    ~CPartList() override { Clear(); }

    void Clear()
    {
        for (INT_PTR i = 0; i < GetSize(); i++)
            delete GetAt(i);
        RemoveAll();
    }

    void Serialize(CArchive& ar) override
    {
        if (ar.IsStoring())
        {
            ar.WriteCount(static_cast<ULONGLONG>(GetSize()));
            for (INT_PTR i = 0; i < GetSize(); i++)
                GetAt(i)->Serialize(ar);
            return;
        }
        Clear();
        const ULONGLONG nCount = ar.ReadCount();
        for (ULONGLONG n = 0; n < nCount; n++)
        {
            auto* pPart = new CPart;
            Add(pPart);
            pPart->Serialize(ar);
        }
    }
};

// Reads lines of "name=count"; FALSE with the reason when the file cannot be read.
BOOL ReadParts(LPCTSTR lpszPath, CPartList& parts, CString& strError)
{
    CStdioFile file;
    CFileException e;
    if (!file.Open(lpszPath, CFile::modeRead | CFile::typeText, &e))
    {
        TCHAR szCause[255];
        e.GetErrorMessage(szCause, 255);
        strError.Format("Cannot read %s (%d): %s", lpszPath, e.m_cause, szCause);
        return FALSE;
    }
    CString strLine;
    while (file.ReadString(strLine))
    {
        strLine.Trim();
        const int nPos = strLine.Find('=');
        if (strLine.IsEmpty() || nPos < 0)
            continue;
        CString strName = strLine.Left(nPos);
        strName.MakeUpper();
        parts.Add(new CPart(strName, atoi(strLine.Mid(nPos + 1))));
    }
    file.Close();
    return TRUE;
}

BOOL StoreParts(LPCTSTR lpszPath, CPartList& parts)
{
    BOOL bDone = FALSE;
    try
    {
        CFile file(lpszPath, CFile::modeCreate | CFile::modeWrite);
        CArchive ar(&file, CArchive::store);
        parts.Serialize(ar);
        ar.Close();
        file.Close();
        bDone = TRUE;
    }
    catch (CFileException* pEx)
    {
        pEx->Delete();
    }
    return bDone;
}

CString LoadParts(LPCTSTR lpszPath, CPartList& parts)
{
    try
    {
        CFile file(lpszPath, CFile::modeRead | CFile::shareDenyWrite);
        CArchive ar(&file, CArchive::load);
        parts.Serialize(ar);
    }
    catch (CArchiveException* pEx)
    {
        pEx->Delete();
        return "archive";
    }
    catch (CException* pEx)
    {
        const CString strClass = pEx->GetRuntimeClass()->m_lpszClassName;
        pEx->Delete();
        return strClass;
    }
    return CString();
}
} // namespace

TEST(HostSample, ReadsTextAndStoresAndLoadsIt)
{
    const TempDir dir;
    CPartList parts;
    CString strError;
    ASSERT_TRUE(ReadParts(dir.Write("list.txt", "r1=3\r\n\r\n  c7 = 12 \nno count\n").c_str(), parts, strError));
    ASSERT_EQ(parts.GetSize(), 2);
    EXPECT_EQ(parts[0]->m_strName, "R1");
    EXPECT_EQ(parts[1]->m_strName, "C7 ");
    EXPECT_EQ(parts[1]->m_nCount, 12);
    ASSERT_TRUE(StoreParts(dir.Path("list.bin").c_str(), parts));
    EXPECT_EQ(dir.Read("list.bin"), std::string("\x02\0\x02R1\x03\0\0\0\x03"
                                                "C7 \x0C\0\0\0",
                                                17));
    CPartList loaded;
    EXPECT_EQ(LoadParts(dir.Path("list.bin").c_str(), loaded), "");
    ASSERT_EQ(loaded.GetSize(), 2);
    EXPECT_EQ(loaded.GetAt(1)->m_nCount, 12);
}

TEST(HostSample, MeetsEveryFailureAsACaughtPointer)
{
    const TempDir dir;
    CPartList parts;
    CString strError;
    const std::string path = dir.Path("none");
    EXPECT_FALSE(ReadParts(path.c_str(), parts, strError));
    EXPECT_EQ(strError, ("Cannot read " + path + " (2): " + path + ": the file does not exist").c_str());
    EXPECT_FALSE(StoreParts(dir.Path("none/list").c_str(), parts));
    EXPECT_EQ(LoadParts(path.c_str(), parts), "CFileException");
    EXPECT_EQ(LoadParts(dir.Write("cut", std::string("\x02\0\x02R1\x03\0", 7)).c_str(), parts), "archive");
}

TEST(HostSample, WalksListsByIndex)
{
    CStringArray names;
    const CString strLine = "GND VCC  CLK";
    int nPos = 0;
    CString strToken = strLine.Tokenize(" ", nPos);
    while (!strToken.IsEmpty())
    {
        names.Add(strToken);
        strToken = strLine.Tokenize(" ", nPos);
    }
    CString strAll;
    for (int i = 0; i < names.GetSize(); i++)
    {
        if (i > 0)
            strAll += ", ";
        strAll += names[i];
    }
    EXPECT_EQ(strAll, "GND, VCC, CLK");
    try
    {
        names.RemoveAt(3);
        ADD_FAILURE();
    }
    catch (CInvalidArgException* pEx)
    {
        pEx->Delete();
    }
}

TEST(HostSample, CopiesARecordThroughMemory)
{
    CPart source("R1", 5);
    CPart target;
    CMemFile memFile(1024);
    CArchive arStore(&memFile, CArchive::store, 4096);
    source.Serialize(arStore);
    arStore.Close();
    memFile.SeekToBegin();
    CArchive arLoad(&memFile, CArchive::load, 4096);
    target.Serialize(arLoad);
    arLoad.Close();
    EXPECT_EQ(target.m_strName, "R1");
    EXPECT_EQ(target.m_nCount, 5);
}
