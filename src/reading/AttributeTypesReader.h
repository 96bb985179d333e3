// The definitions of a job's attributes: the files "userattr", "sysattr" and "sysattr.*" of its folder "misc".
#pragma once

#include "reading/CSourceFile.h"

// Adds the definitions of all these files to `types`. User attributes come first, so they take precedence. A job may
// have none.
void ReadAttributeTypes(const CReadingContext& context, const CSourceFolder& misc, CAttributeTypes& types);
