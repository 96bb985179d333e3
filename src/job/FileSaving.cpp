#include "job/FileSaving.h"

#include "foundation/corekit/CByteHash.h"
#include "foundation/corekit/CDiagnosticCapture.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/EntryLookup.h"
#include "foundation/corekit/SystemEntries.h"
#include "job/SourceTree.h"
#include "reading/AttributeTypesReader.h"
#include "reading/CSourceFile.h"
#include "reading/SavingMessageKinds.h"
#include "reading/SystemAttributes.h"
#include "saving/LineWeaver.h"

#include <algorithm>
#include <tuple>
#include <utility>

using namespace saving_message;

namespace
{
CString PathOf(const CString& directory, const std::string& below)
{
    return below.empty() ? directory
                         : CKUtility::GetInstance()->CKPathCombine(directory, CString(std::string_view(below)));
}

int ReasonOf(const std::vector<CKDiagnostic>& said)
{
    return said.empty() ? 0 : said.back().systemError;
}

// The first line that differs, of the lines that were meant.
std::string_view FirstDifference(const CRecordLines& meant, const CRecordLines& read)
{
    for (std::size_t i = 0; i < meant.Lines().size(); ++i)
    {
        const std::string_view text = meant.TextOf(meant.Lines()[i]);
        if (i >= read.Lines().size() || read.TextOf(read.Lines()[i]) != text)
            return text;
    }
    return read.TextOf(read.Lines()[meant.Lines().size()]);
}
} // namespace

CFileSaving::CFileSaving(Places places, const CJobSource* source, const CJOBXreading& reading, JOBXunit unit)
    : m_places(std::move(places)), m_source(source), m_reading(reading), m_job{m_reading, m_places.output}
{
    CMessageList messages(m_reading);
    const CReadingContext context{m_job, messages};
    if (!m_places.source.IsEmpty())
        ReadAttributeTypes(context, CSourceFolder(FindEntry(m_places.source, "misc")), m_job.types);
    AddSystemAttributes(m_job.types);
    m_job.unit = unit;
}

CString CFileSaving::SourcePath(const std::string& file) const
{
    return PathOf(m_places.source, file);
}

CString CFileSaving::OutputPath(const std::string& file) const
{
    return PathOf(m_places.output, file);
}

std::vector<CFileSaving::Failure> CFileSaving::Failures() const
{
    std::vector<Failure> failures = m_failures;
    std::sort(failures.begin(), failures.end(),
              [](const Failure& a, const Failure& b) { return std::tie(a.file, a.text) < std::tie(b.file, b.text); });
    return failures;
}

void CFileSaving::AddFailure(Failure failure)
{
    const std::scoped_lock lock(m_lock);
    m_failures.push_back(std::move(failure));
}

// The bytes of a file of the source, if they are those that were read.
bool CFileSaving::Load(const std::string& file, CFileBytes& bytes)
{
    std::vector<CKDiagnostic> said;
    const CDiagnosticCapture capture(said);
    if (!bytes.Load(SourcePath(file), __FILE__, __LINE__))
    {
        Fail(file, kChanged, "The file cannot be read again: ", SystemReason(ReasonOf(said)), ".");
        return false;
    }
    const auto& hashes = m_source->taken.Hashes();
    const auto known = hashes.find(file);
    const bool isSame = known == hashes.end() || known->second == 0 || known->second == CByteHash::Of(bytes.View());
    if (!isSame)
        Fail(file, kChanged, "The file has changed since it was read.");
    return isSame;
}

void CFileSaving::Write(const std::string& file, std::string_view bytes)
{
    if (const int error = WriteNewFile(OutputPath(file), bytes); error != 0)
        Fail(file, kNotWritten, "The file cannot be written: ", SystemReason(error), ".");
}

void CFileSaving::Copy(const std::string& from, const std::string& to)
{
    CFileBytes bytes;
    if (Load(from, bytes))
        Write(to, bytes.View());
}

void CFileSaving::Weave(const std::string& from, const std::string& to, const CRecordLines& before,
                        const CRecordLines& now, const ReadBack& readBack)
{
    CFileBytes bytes;
    std::string source;
    if (!from.empty() && (!Load(from, bytes) || !CSourceFile::ExpandBytes(m_reading, bytes.View(), source)))
        return;
    const std::string woven = WeaveLines(source, before, now);
    Write(to, woven);
    if (woven != bytes.View() && !from.empty())
    {
        const std::scoped_lock lock(m_lock);
        m_changed.insert(from);
    }
    Check(to, woven, now, readBack);
}

void CFileSaving::Check(const std::string& file, const std::string& woven, const CRecordLines& now,
                        const ReadBack& readBack)
{
    CMessageList messages(m_reading);
    CRecordLines read;
    readBack({m_job, messages, &woven}, read);
    const auto isSame = [&](const CRecordLines::Line& a, const CRecordLines::Line& b)
    { return now.TextOf(a) == read.TextOf(b); };
    if (!std::equal(now.Lines().begin(), now.Lines().end(), read.Lines().begin(), read.Lines().end(), isSame))
        Fail(file, kNotExpressible, "The file cannot say ", Quoted{FirstDifference(now, read)}, ".");
}
