// Complete reading of a job.
#pragma once

#include "reading/CJobSource.h"
#include "reading/CReadingContext.h"

class CJOBX;
class CStringArray;

// One complete reading of a job. Call its stages in the order of their declarations. Each stage delivers its messages
// at its end, and after each step.
// Ownership: borrows the job, what is remembered of its files, and the sink and expander of its setting.
class CJobReading
{
public:
    CJobReading(CJOBX& job, CJobSource& source, const CString& jobPath);

    // False if the folder "steps" or a readable matrix is missing.
    bool ReadMatrix();
    // Unit and attributes of the job come before the parts that need them. The classic order is different.
    void ReadInfoAndSymbols();
    void ReadStepsAndFont(const CStringArray& stepNames);

private:
    void SaySameNames(const CString& place, const CStringArray& directories);
    void CompareSteps(const CString& stepsDirectory, const CStringArray& stepNames);
    void KeepAttributeUnits();
    void ReadSymbols();
    void SayOtherSpelling(const std::string& file);
    void ListCarriedFiles();
    void KeepTexts();

    CJOBX& m_target;
    CJobSource& m_source;
    CReadingJob m_job;
    CMessageList m_messages;
    const CReadingContext m_context{m_job, m_messages};
};
