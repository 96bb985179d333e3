#pragma once

#include "info/BoardFacts.h"
#include "output/Output.h"
#include "reading/JobReader.h"

// Prints the facts about a job's board and what reading found wrong, on one screen of 80 by 24 for ordinary boards.
void PrintBoardScreen(Output& output, const ReadJob& read, const BoardFacts& facts);
