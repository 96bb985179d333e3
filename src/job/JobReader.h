// Reading a job completely.
#pragma once

#include "reading/CReadingContext.h"

class CJOBX;
class CStringArray;

// One complete reading of a job; its stages are called in the order in which they stand here. What is said about the
// job is delivered stage by stage, and after each step.
// Ownership: borrows the job and what its setting points to.
class CJobReading
{
public:
    CJobReading(CJOBX& job, const CString& jobPath);

    // False without a folder "steps" or a matrix that can be read.
    bool ReadMatrix();
    // What a job says of its unit and its attributes comes before what needs it; the classic order is another.
    void ReadInfoAndSymbols();
    void ReadStepsAndFont(const CStringArray& stepNames);

private:
    void CompareSteps(const CString& stepsDirectory, const CStringArray& stepNames);
    void ReadSymbols();

    CJOBX& m_target;
    CReadingJob m_job;
    CMessageList m_messages;
    const CReadingContext m_context{m_job, m_messages};
};
