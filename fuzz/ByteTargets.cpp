// Formats that are no text: compressed files and property archives.
#include "CompleteReading.h"
#include "FuzzTargets.h"
#include "JOBXCLSDLL.h"
#include "Scratch.h"

#include <filesystem>

namespace
{
constexpr ULONGLONG kDecompressionLimit = 1U << 20U;

class ScopedDecompressionLimit
{
public:
    ScopedDecompressionLimit() : m_nOld(CKUtility::GetInstance()->GetDecompressionLimit())
    {
        CKUtility::GetInstance()->SetDecompressionLimit(kDecompressionLimit);
    }
    ~ScopedDecompressionLimit() { CKUtility::GetInstance()->SetDecompressionLimit(m_nOld); }
    ScopedDecompressionLimit(const ScopedDecompressionLimit&) = delete;
    ScopedDecompressionLimit& operator=(const ScopedDecompressionLimit&) = delete;

private:
    ULONGLONG m_nOld;
};

bool Load(CJOBXPropertyArray& properties, CMemFile& file)
{
    try
    {
        CArchive archive(&file, CArchive::load);
        properties.Serialize(archive);
        return true;
    }
    catch (CArchiveException* exception) // the bytes end too early, or a length cannot be
    {
        exception->Delete();
        return false;
    }
}
} // namespace

void FuzzDecompress(std::string_view input)
{
    ReadFileCompletely("steps/pcb/layers/top/features.Z", input);
    const ScopedDecompressionLimit limit;
    const std::string target = Scratch().Path("features");
    const bool done = CKUtility::GetInstance()->GDecompress(ScratchFile("features.Z", input)) != 0;
    std::error_code error;
    const auto size = std::filesystem::file_size(target, error);
    Require(done == !error, "there is a decompressed file exactly when decompression says so");
    Require(!done || size <= kDecompressionLimit, "the limit holds");
    std::filesystem::remove(target, error);
}

void FuzzProperties(std::string_view input)
{
    CMemFile file(reinterpret_cast<const BYTE*>(input.data()), static_cast<UINT>(input.size()));
    CJOBXPropertyArray properties;
    const bool complete = Load(properties, file);
    Require(static_cast<std::size_t>(properties.GetSize()) <= input.size(), "every record was in the archive");

    CMemFile stored;
    {
        CArchive archive(&stored, CArchive::store);
        properties.Serialize(archive);
        archive.Close();
    }
    stored.SeekToBegin();
    CJOBXPropertyArray again;
    Require(Load(again, stored), "a stored archive is loaded");
    Require(again == properties, "a stored archive holds what was stored");
    if (complete && properties.GetSize() > 0)
        Require(properties.ExistSameData(properties.GetAt(0)) == 1, "an element is found");
    properties.GetReport_ForPickingProperty();
    for (__int64 i = 0; i < properties.GetSize(); ++i)
        delete properties.GetAt(i)->pGetECadClsLvl();
}
