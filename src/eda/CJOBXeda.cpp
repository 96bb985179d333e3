#include "eda/CJOBXeda.h"

#include "eda/CJOBXdata.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/Guarded.h"

CJOBXeda::CJOBXeda() : m_pData(new CJOBXdata) {}

CJOBXeda::~CJOBXeda()
{
    delete m_pData;
}

int CJOBXeda::ParseODBOfMFC(CString edaDirectory)
{
    return Guarded(
        [&]
        {
            CKUtility* const files = CKUtility::GetInstance();
            if (!files->DoesFileOrDirExist(edaDirectory, __FILE__, __LINE__))
                return 0;
            return m_pData->ParseODBOfMFC(files->FindPath(edaDirectory, "data", __FILE__, __LINE__));
        });
}
