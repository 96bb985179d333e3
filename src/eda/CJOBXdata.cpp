#include "eda/CJOBXdata.h"

#include "eda/CJOBXdataFields.h"
#include "foundation/ScaleLengths.h"

namespace
{
int FindText(const CStringArray& texts, const CString& text, int absent)
{
    for (INT_PTR i = 0; i < texts.GetSize(); ++i)
        if (texts[i] == text)
            return static_cast<int>(i);
    return absent;
}
} // namespace

CJOBXdata::~CJOBXdata() = default;

void CJOBXdata::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

int CJOBXdata::GetLayerIndex(CString name) const
{
    return FindText(m_arrLayerNames, name, 0);
}

int CJOBXdata::FindAttributeNameIndex(CString name) const
{
    return FindText(m_arrAttributeNames, name, -1);
}

int CJOBXdata::FindAttributeContentIndex(CString text) const
{
    return FindText(m_arrAttributeTexts, text, -1);
}
