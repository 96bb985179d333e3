#include "eda/CJOBXdataFgr.h"

template class CExPtrArray<CJOBXdataFgr*, CJOBXdataFgr*>;

CJOBXdataFgr::~CJOBXdataFgr() = default;

CJOBXdataFgrArray::~CJOBXdataFgrArray() = default;
