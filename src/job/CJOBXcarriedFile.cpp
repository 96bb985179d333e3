#include "job/CJOBXcarriedFile.h"

template class CExPtrArray<CJOBXcarriedFile*, CJOBXcarriedFile*>;

CJOBXcarriedFile::CJOBXcarriedFile() = default;

CJOBXcarriedFile::~CJOBXcarriedFile() = default;

CJOBXcarriedFileArray::CJOBXcarriedFileArray() = default;

CJOBXcarriedFileArray::~CJOBXcarriedFileArray() = default;
