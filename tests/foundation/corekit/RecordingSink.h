// Keeps every diagnostic that the file utility reports while the object lives.
#pragma once

#include "foundation/corekit/CKUtility.h"

#include <vector>

class RecordingSink : public CKDiagnosticSink
{
public:
    RecordingSink() : m_former(CKUtility::GetInstance()->SetDiagnosticSink(this)) {}
    ~RecordingSink() override { CKUtility::GetInstance()->SetDiagnosticSink(m_former); }

    void OnDiagnostic(const CKDiagnostic& diagnostic) override { all.push_back(diagnostic); }

    std::vector<CKDiagnostic> all;

private:
    CKDiagnosticSink* m_former;
};
