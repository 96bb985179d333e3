#include "foundation/corekit/CECadClsLvl.h"

CECadClsLvl::~CECadClsLvl() = default;
