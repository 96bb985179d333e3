// Writes the files of a job that is being saved.
#pragma once

#include "foundation/corekit/CFileBytes.h"
#include "foundation/framework/CString.h"
#include "reading/CJobSource.h"
#include "reading/CReadingContext.h"
#include "saving/CRecordLines.h"

#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// Paths of files are below the source or the output, with "/" between their parts.
// Results:   what fails is collected; see Failures.
// Threads:   any number, each with other files.
class CFileSaving
{
public:
    struct Places
    {
        CString source; // "" for a job that was made from nothing
        CString output;
    };
    struct Failure
    {
        std::string file;
        const CJOBXmessageKind* kind;
        std::string text;
    };
    // Reads the bytes that the context has completely, as a file, and lists its lines.
    using ReadBack = std::function<void(const CReadingContext& context, CRecordLines& lines)>;

    // `source` has the hashes of the files that were read; null for a job that was made from nothing. `unit` is that of
    // files that name none. Borrows `source` and `reading`.
    CFileSaving(Places places, const CJobSource* source, const CJOBXreading& reading, JOBXunit unit);

    // Copies a file of the source.
    void Copy(const std::string& from, const std::string& to);
    // Writes a file whose part of the model has changed from `before` to `now`; `from` is "" for a new one. What is
    // written must say what `now` says if it is read back.
    void Weave(const std::string& from, const std::string& to, const CRecordLines& before, const CRecordLines& now,
               const ReadBack& readBack);

    template <class... Parts>
    void Fail(const std::string& file, const CJOBXmessageKind& kind, const Parts&... parts)
    {
        std::string text;
        (reading_text::Append(text, parts), ...);
        AddFailure({file, &kind, std::move(text)});
    }
    // By file.
    std::vector<Failure> Failures() const;
    // The files of the source that were not copied as they are.
    const std::set<std::string>& Changed() const noexcept { return m_changed; }
    // The definitions of the job's attributes.
    const CAttributeTypes& Types() const noexcept { return m_job.types; }
    CString SourcePath(const std::string& file) const;
    CString OutputPath(const std::string& file) const;

private:
    void AddFailure(Failure failure);
    bool Load(const std::string& file, CFileBytes& bytes);
    void Write(const std::string& file, std::string_view bytes);
    void Check(const std::string& file, const std::string& woven, const CRecordLines& now, const ReadBack& readBack);

    Places m_places;
    const CJobSource* m_source;
    const CJOBXreading& m_reading;
    CReadingJob m_job; // for reading back
    std::mutex m_lock;
    std::vector<Failure> m_failures;
    std::set<std::string> m_changed;
};
