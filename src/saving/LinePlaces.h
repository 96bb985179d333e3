// Where the lines of a file go when it is saved.
#pragma once

#include "saving/CRecordLines.h"
#include "saving/SourceLines.h"

#include <vector>

constexpr int kNoLine = -1;

struct LinePlaces
{
    struct Place
    {
        int before = kNoLine;    // the line before that it was
        bool isInserted = false; // it is new, or it moves; else it stays, or is still left out
        int behind = 0;          // the line of the source behind which it is inserted; 0: at the beginning
    };

    std::vector<int> lineOfBefore; // the line of the source, for each line before; kNoLine if it is left out there
    std::vector<bool> isOfRecord;  // for each line of the source, from 1
    std::vector<Place> ofNow;      // for each line now
};

LinePlaces FindPlaces(const CSourceLines& source, const CRecordLines& before, const CRecordLines& now);
