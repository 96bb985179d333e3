#include "job/CJOBXmisc.h"

CJOBXmisc::CJOBXmisc() = default;

CJOBXmisc::~CJOBXmisc() = default;
