#pragma once

#include "JOBXCLSDLL.h"

// Expands gzip files with zlib. A file may consist of several gzip members; zero bytes after the last are ignored.
class GzipExpander : public CJOBXgzipExpander
{
public:
    bool Expand(std::string_view data, CJOBXblockTaker& taker) override;
};
