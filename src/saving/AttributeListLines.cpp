#include "saving/AttributeListLines.h"

#include "foundation/CJOBXattributeList.h"
#include "saving/KeyedLines.h"

void ListLines(const CJOBXattributeList& list, CRecordLines& lines)
{
    ListUnits(list.GetUnit(), lines);
    for (const CJOBXProperty& attribute : list.GetAttributes()->Records())
        lines.KeyValue(0, attribute.m_sName.View(), attribute.m_sValue.View());
}
