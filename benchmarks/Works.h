// The works that bench_table measures: how the input of each is made and how it is read.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

// Below a work's directory: "input" is what is read; "floor", where there is one, is what its floor splits instead.
struct ReadingWork
{
    std::string_view name;
    const char* title;
    const char* target; // of the ratio to its floor
    const char* ratioTo;
    double megabytes; // of the input; what grows is measured with ten times as much, too
    bool grows;
    bool floorReadsFiles; // the time goes to many small files
    // Makes an input of so many megabytes in the work's directory.
    void (*make)(const std::filesystem::path& directory, double megabytes);
    // Brings the input back to how it was made.
    void (*restore)(const std::filesystem::path& input);
    // Reads the input; the model goes with the pointer.
    std::shared_ptr<void> (*read)(const std::filesystem::path& input);
};

const std::vector<ReadingWork>& ReadingWorks();

// The one of that name; std::out_of_range when there is none.
const ReadingWork& FindWork(std::string_view name);

// A job of which nearly all is one kind of file, for comparing complete reading with classic reading.
struct KindOfJob
{
    const char* title;
    // Makes a job of so many megabytes as "input" in the directory.
    void (*make)(const std::filesystem::path& directory, double megabytes);
};

const std::vector<KindOfJob>& KindsOfJob();

// Writes a job with all layers equally large and, beside it, the number of its lengths.
void MakeJob(const std::filesystem::path& directory, double megabytes);

// How many lengths of the job a unit change multiplies.
double LengthsOf(const std::filesystem::path& directory);
