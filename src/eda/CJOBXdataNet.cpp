#include "eda/CJOBXdataNet.h"

template class CExPtrArray<CJOBXdataNet*, CJOBXdataNet*>;

namespace
{
// The index of the first net of that name from `first` on, -1 if there is none. Replaces every blank in the name by
// "_".
__int64 FindName(const CJOBXdataNetArray& nets, CString name, __int64 first)
{
    name.Replace(' ', '_');
    for (__int64 i = first; i < nets.GetSize(); ++i)
        if (const CJOBXdataNet* const net = nets.GetAt(i); net != nullptr && net->m_sName == name)
            return i;
    return -1;
}
} // namespace

CJOBXdataNet::~CJOBXdataNet() = default;

CJOBXdataNetArray::~CJOBXdataNetArray() = default;

CJOBXdataNet* CJOBXdataNetArray::GetNetData(int number) const
{
    for (CJOBXdataNet& net : Records())
        if (net.m_nNumber == number)
            return &net;
    return nullptr;
}

CJOBXdataNet* CJOBXdataNetArray::GetNetData(const CString& name) const
{
    return GetAt(FindName(*this, name, 0));
}

__int64 CJOBXdataNetArray::FindNetID(CString name) const
{
    const __int64 found = FindName(*this, name, 1);
    return found < 0 ? 0 : found;
}
