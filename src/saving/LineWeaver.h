// Joins the lines of a file with those that the model has now.
#pragma once

#include "saving/CRecordLines.h"

#include <string>
#include <string_view>

// The text of a file whose model changed from `before` to `now`. Both list the same file: `before` as it was read from
// `source`, `now` as it is to be saved. A line of a record that did not change stays as it is, to the byte. Of a line
// that changed, only the fields that differ are replaced. Lines of records that are gone are left out. Lines of new
// records follow the record before them in `now`. Comments, empty lines and lines that no record came from stay where
// they are; if the record before an unknown line moves, the line moves with it. New lines end like those of the file
// and are indented like their neighbours.
// An empty source gives the lines of `now` as they are listed.
std::string WeaveLines(std::string_view source, const CRecordLines& before, const CRecordLines& now);
