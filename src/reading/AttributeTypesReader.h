// The definitions of a job's attributes: the files "userattr" and "sysattr", "sysattr.*" of its folder "misc".
#pragma once

#include "reading/CReadingContext.h"

// Adds the definitions of all these files to `types`; user attributes come first and so win. A job may have none.
void ReadAttributeTypes(const CReadingContext& context, const CString& miscDirectory, CAttributeTypes& types);
