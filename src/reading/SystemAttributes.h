// The types of well-known system attributes. Most jobs use them without a definition.
#pragma once

#include "reading/CAttributeTypes.h"

// Adds those that have no definition yet.
void AddSystemAttributes(CAttributeTypes& types);
