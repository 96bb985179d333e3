// bench_table: measures reading, changing, writing and destroying, each beside its floor, and prints one table. Every
// work runs in a child process of its own, so that none inherits the memory of another.
#include "AllocationCount.h"
#include "ChildProcess.h"
#include "Floor.h"
#include "JOBXCLSDLL.h"
#include "Measurement.h"
#include "Works.h"

#include <CLI/CLI.hpp>
#include <omp.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <numeric>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{
namespace fs = std::filesystem;

constexpr int kRepeats = 5;
constexpr int kLargeRepeats = 3;
constexpr double kGrowth = 10.0;
constexpr double kCompared = 30.0; // megabytes of a made job that is read in both ways
constexpr double kSmallJob = 15e6; // bytes; reading it takes so little time that it is measured more often

std::vector<fs::path> FilesBelow(const fs::path& directory)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(directory))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    return files;
}

// The bytes that a floor splits.
class FloorText
{
public:
    FloorText(const std::vector<fs::path>& files, bool readsFiles) : m_files(files), m_readsFiles(readsFiles)
    {
        for (const fs::path& file : files)
        {
            m_size += static_cast<double>(fs::file_size(file));
            if (!readsFiles)
                m_texts.push_back(FileBytes(file.string()));
        }
    }

    double Size() const { return m_size; }
    double Seconds() const
    {
        return ProcessorSeconds([this] { benchmark::DoNotOptimize(Sum()); });
    }

private:
    double Sum() const
    {
        double sum = 0.0;
        for (const std::string& text : m_texts)
            sum += SplitAndConvert(text);
        if (m_readsFiles)
            for (const fs::path& file : m_files)
                sum += SplitAndConvert(FileBytes(file.string()));
        return sum;
    }

    std::vector<fs::path> m_files;
    std::vector<std::string> m_texts;
    bool m_readsFiles;
    double m_size = 0.0;
};

// --- what the children do ---

// Reads the input again and again, the floor in between.
void MeasureReading(const ReadingWork& work, const fs::path& directory, int repeats, Measurement& measurement)
{
    const fs::path floor = directory / "floor";
    const FloorText text(FilesBelow(fs::exists(floor) ? floor : directory / "input"), work.floorReadsFiles);
    Alternated reading;
    Alternated destroying;
    std::vector<double> destroyShares;
    for (int i = 0; i < repeats; ++i)
    {
        work.restore(directory / "input");
        const double floorSeconds = text.Seconds();
        const std::size_t bytesBefore = AllocatedBytes();
        const std::int64_t blocksBefore = LiveBlocks();
        std::shared_ptr<void> model;
        const double seconds = ProcessorSeconds([&] { model = work.read(directory / "input"); });
        const auto bytes = static_cast<double>(AllocatedBytes() - bytesBefore);
        const auto blocks = static_cast<double>(LiveBlocks() - blocksBefore);
        const double freeing = ProcessorSeconds([&] { model.reset(); });
        reading.Add(seconds, floorSeconds);
        destroying.Add(freeing,
                       FreeingSeconds(static_cast<std::size_t>(blocks), static_cast<std::size_t>(bytes / blocks)));
        destroyShares.push_back(freeing / seconds);
        measurement.Set("memory", bytes / text.Size());
        measurement.Set("blocks", blocks);
    }
    measurement.Set("bytes", text.Size());
    measurement.Set("seconds", reading.Work());
    measurement.Set("ratio", reading.Ratio());
    measurement.Set("destroySeconds", destroying.Work());
    measurement.Set("destroyRatio", destroying.Ratio());
    measurement.Set("destroyShare", Median(destroyShares));
}

// One read in a process that has allocated nothing before, as in a program that reads one job.
void MeasureOnce(const ReadingWork& work, const fs::path& input, Measurement& measurement)
{
    const std::size_t before = AllocatedBytes();
    // Outlives the process: destroying it would only take time.
    static std::shared_ptr<void>& model = *new std::shared_ptr<void>;
    measurement.Set("seconds", ProcessorSeconds([&] { model = work.read(input); }));
    measurement.Set("allocated", static_cast<double>(AllocatedBytes() - before));
}

double SizeBelow(const fs::path& directory)
{
    double size = 0.0;
    for (const fs::path& file : FilesBelow(directory))
        size += static_cast<double>(fs::file_size(file));
    return size;
}

std::shared_ptr<CJOBX> ReadJob(const fs::path& directory)
{
    auto job = std::make_shared<CJOBX>();
    if (job->ParseODBOfMFC(directory.c_str()) != 1)
        throw std::runtime_error("cannot read " + directory.string());
    return job;
}

// A job read on one thread and on two, by the clock on the wall.
void MeasureThreads(const fs::path& directory, Measurement& measurement)
{
    const auto read = [&directory](int threads)
    {
        omp_set_num_threads(threads);
        const auto begin = std::chrono::steady_clock::now();
        const std::shared_ptr<CJOBX> job = ReadJob(directory / "input");
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    };
    Alternated times;
    for (int i = 0; i <= kLargeRepeats; ++i)
    {
        const double one = read(1);
        times.Add(one, read(2));
    }
    measurement.Set("bytes", SizeBelow(directory / "input"));
    measurement.Set("oneSeconds", times.Work());
    measurement.Set("twoSeconds", times.Floor());
    measurement.Set("speedUp", times.Ratio());
}

void MeasureUnitChange(const fs::path& directory, Measurement& measurement)
{
    constexpr double kMillimetres = 25.4;
    const std::shared_ptr<CJOBX> job = ReadJob(directory / "input");
    std::vector<double> lengths(static_cast<std::size_t>(LengthsOf(directory)), 1.0);
    Alternated times;
    for (int i = 0; i < 2 * kRepeats; ++i)
    {
        const double factor = i % 2 == 0 ? kMillimetres : 1.0 / kMillimetres;
        const double floor = ProcessorSeconds(
            [&]
            {
                for (double& length : lengths)
                    length *= factor;
                benchmark::DoNotOptimize(lengths.data());
                benchmark::ClobberMemory();
            });
        times.Add(ProcessorSeconds([&] { job->UnitConvert(factor); }), floor);
    }
    measurement.Set("bytes", SizeBelow(directory / "input"));
    measurement.Set("seconds", times.Work());
    measurement.Set("ratio", times.Ratio());
}

std::vector<PrintedNumber> NumbersBelow(const fs::path& directory)
{
    std::vector<PrintedNumber> numbers;
    for (const fs::path& file : FilesBelow(directory))
    {
        const std::vector<PrintedNumber> more = NumbersOf(FileBytes(file.string()));
        numbers.insert(numbers.end(), more.begin(), more.end());
    }
    return numbers;
}

double SecondsToWrite(const CJOBX& job, const fs::path& directory)
{
    CJOBX& written = const_cast<CJOBX&>(job);
    return ProcessorSeconds([&] { written.WriteODBData(directory.c_str(), 1); });
}

void MeasureWriting(const fs::path& small, const fs::path& large, const fs::path& output, Measurement& measurement)
{
    Alternated times;
    {
        const std::shared_ptr<CJOBX> job = ReadJob(small / "input");
        SecondsToWrite(*job, output / "job");
        const std::vector<PrintedNumber> numbers = NumbersBelow(output / "job");
        for (int i = 0; i < kRepeats; ++i)
        {
            const double floor = ProcessorSeconds([&] { PrintNumbers(numbers, (output / "numbers").string()); });
            times.Add(SecondsToWrite(*job, output / "job"), floor);
        }
        measurement.Set("bytes", SizeBelow(output / "job"));
    }
    measurement.Set("seconds", times.Work());
    measurement.Set("ratio", times.Ratio());
    const std::shared_ptr<CJOBX> job = ReadJob(large / "input");
    std::array<double, kLargeRepeats> seconds{};
    for (double& time : seconds)
        time = SecondsToWrite(*job, output / "job");
    measurement.Set("growth", Median({seconds.begin(), seconds.end()}) / times.Work());
}

// A job read classically and completely in turn.
void MeasureWays(const fs::path& job, Measurement& measurement)
{
    Alternated times;
    std::vector<double> memory;
    double bytes = 0.0;
    const auto read = [&](const char* work)
    {
        const std::size_t before = AllocatedBytes();
        std::shared_ptr<void> model;
        const double seconds = ProcessorSeconds([&] { model = FindWork(work).read(job); });
        bytes = static_cast<double>(AllocatedBytes() - before);
        return seconds;
    };
    const double size = SizeBelow(job);
    const int repeats = size > kSmallJob ? kRepeats : 5 * kRepeats;
    for (int i = 0; i <= repeats; ++i)
    {
        const double classic = read("job");
        const double classicBytes = bytes;
        times.Add(read("job.complete"), classic);
        memory.push_back(bytes / classicBytes);
        measurement.Set("memory", bytes / size);
    }
    measurement.Set("bytes", size);
    measurement.Set("seconds", times.Work());
    measurement.Set("ratio", times.Ratio());
    measurement.Set("memoryRatio", Median(memory));
}

// Programs started from now on read on so many threads.
void UseThreads(int threads)
{
    setenv("OMP_NUM_THREADS", std::to_string(threads).c_str(), 1);
}

Usage RunJobx(const std::vector<std::string>& arguments, const std::string& output = "/dev/null")
{
    const Usage usage = RunChild(arguments, output);
    if (usage.exitCode != 0)
        throw std::runtime_error(arguments.front() + " failed");
    return usage;
}

// The whole program, which reads the job and prints it; so does its floor.
void MeasureJson(const std::string& jobx, const fs::path& directory, const fs::path& output, Measurement& measurement)
{
    const std::string document = (output / "document").string();
    const std::vector<std::string> command{jobx, "json", (directory / "input").string()};
    measurement.Set("peak", RunJobx(command, document).peakBytes);
    const FloorText text(FilesBelow(directory / "input"), false);
    const std::vector<PrintedNumber> numbers = NumbersOf(FileBytes(document));
    Alternated times;
    for (int i = 0; i < kRepeats; ++i)
    {
        const double floor =
            text.Seconds() + ProcessorSeconds([&] { PrintNumbers(numbers, (output / "numbers").string()); });
        times.Add(RunJobx(command, document).processorSeconds, floor);
    }
    measurement.Set("bytes", static_cast<double>(fs::file_size(document)));
    measurement.Set("seconds", times.Work());
    measurement.Set("ratio", times.Ratio());
}

// The files of a job that the library reads.
std::vector<fs::path> ReadFilesOf(const fs::path& job)
{
    std::vector<fs::path> files;
    for (const fs::path& file : FilesBelow(job))
        for (const char* const name :
             {"features", "components", "data", "netlist", "profile", "stephdr", "matrix", "info", "standard"})
            if (file.filename() == name)
                files.push_back(file);
    return files;
}

// The whole program on a real job beside reading its files and splitting them.
void MeasureInfo(const std::string& jobx, const fs::path& job, Measurement& measurement)
{
    const std::vector<std::string> command{jobx, "info", job.string()};
    const FloorText text(ReadFilesOf(job), true);
    Alternated processor;
    Alternated elapsed;
    for (int i = 0; i < 3 * kRepeats; ++i)
    {
        const double floor = text.Seconds();
        UseThreads(1);
        const Usage usage = RunJobx(command);
        processor.Add(usage.processorSeconds, floor);
        measurement.Set("peak", usage.peakBytes);
        UseThreads(2);
        elapsed.Add(RunJobx(command).elapsedSeconds, floor);
    }
    measurement.Set("bytes", text.Size());
    measurement.Set("seconds", processor.Work());
    measurement.Set("ratio", processor.Ratio());
    measurement.Set("elapsedSeconds", elapsed.Work());
    measurement.Set("elapsedRatio", elapsed.Ratio());
}

// --- the table ---

struct Options
{
    double scale = 1.0;
    std::string jobx;
    std::string realJobs;
    std::string child; // what a child measures; empty in the parent
    std::vector<std::string> places;
};

int RunAsChild(const Options& options)
{
    const auto& places = options.places;
    Measurement measurement;
    if (options.child == "read")
        MeasureReading(FindWork(places.at(0)), places.at(1), kRepeats, measurement);
    else if (options.child == "once")
        MeasureOnce(FindWork(places.at(0)), places.at(1), measurement);
    else if (options.child == "threads")
        MeasureThreads(places.at(0), measurement);
    else if (options.child == "ways")
        MeasureWays(places.at(0), measurement);
    else if (options.child == "units")
        MeasureUnitChange(places.at(0), measurement);
    else if (options.child == "write")
        MeasureWriting(places.at(0), places.at(1), places.at(2), measurement);
    else if (options.child == "json")
        MeasureJson(places.at(0), places.at(1), places.at(2), measurement);
    else if (options.child == "info")
        MeasureInfo(places.at(0), places.at(1), measurement);
    else
        throw std::invalid_argument("no such measurement: " + options.child);
    measurement.Print();
    return 0;
}

// A new directory below the place for temporary files that goes with the object.
class Scratch
{
public:
    Scratch() : m_path(fs::temp_directory_path() / ("jobx_bench_" + std::to_string(std::random_device()())))
    {
        if (!fs::create_directory(m_path))
            throw std::runtime_error(m_path.string() + " is there already");
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch()
    {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
    const fs::path& Path() const { return m_path; }

private:
    fs::path m_path;
};

class Table
{
public:
    static void PrintHead()
    {
        std::printf("%-38s %8s %8s %8s %8s %8s %8s %8s  %s\n", "work", "input MB", "MB/s", "ratio", "target",
                    "mem/byte", "peak MB", "10x", "ratio is to");
    }

    Table& Name(const char* name)
    {
        std::printf("%-38s", name);
        return *this;
    }
    Table& Number(const Measurement& from, const char* name, int decimals, double scale = 1.0)
    {
        if (from.Has(name))
            std::printf(" %8.*f", decimals, from.Get(name) * scale);
        else
            std::printf(" %8s", "-");
        return *this;
    }
    Table& Text(const char* text)
    {
        std::printf(" %8s", text);
        return *this;
    }
    void End(const char* ratioTo)
    {
        std::printf("  %s\n", ratioTo);
        std::fflush(stdout);
    }
};

void PrintRow(const char* name, const Measurement& row, const char* target, const char* ratioTo)
{
    Measurement speed;
    if (row.Has("seconds"))
        speed.Set("speed", row.Get("bytes") / row.Get("seconds"));
    Table()
        .Name(name)
        .Number(row, "bytes", 1, 1e-6)
        .Number(speed, "speed", 1, 1e-6)
        .Number(row, "ratio", 2)
        .Text(target)
        .Number(row, "memory", 2)
        .Number(row, "peak", 0, 1e-6)
        .Number(row, "growth", 2)
        .End(ratioTo);
}

class Bench
{
public:
    explicit Bench(const Options& options) : m_options(options) {}

    void Run()
    {
        Table::PrintHead();
        for (const ReadingWork& work : ReadingWorks())
            MeasureWork(work);
        MeasureBothWays();
        Info();
    }

private:
    fs::path Small() const { return m_scratch.Path() / "small"; }
    fs::path Large() const { return m_scratch.Path() / "large"; }

    // What the child prints; with the most memory that it had.
    Measurement Child(const std::string& what, const std::vector<std::string>& places) const
    {
        std::vector<std::string> command{fs::read_symlink("/proc/self/exe").string(), "--child", what};
        command.insert(command.end(), places.begin(), places.end());
        const std::string output = (m_scratch.Path() / "measurement").string();
        const Usage usage = RunChild(command, output);
        if (usage.exitCode != 0)
            throw std::runtime_error("measuring failed: " + what);
        Measurement measurement = Measurement::FromFile(output);
        if (what == "once")
            measurement.Set("peak", usage.peakBytes);
        return measurement;
    }

    void MeasureWork(const ReadingWork& work)
    {
        const std::string name(work.name);
        work.make(Small(), work.megabytes * m_options.scale);
        Measurement row = Child("read", {name, Small().string()});
        if (work.grows)
            work.make(Large(), kGrowth * work.megabytes * m_options.scale);
        MeasureOnceEach(work, row);
        PrintRow(work.title, row, work.target, work.ratioTo);
        if (work.name == "job")
            MeasureWholeJob(row);
        fs::remove_all(Small());
        fs::remove_all(Large());
    }

    // How much longer the large input takes than the small one, and the memory that the larger of both takes.
    void MeasureOnceEach(const ReadingWork& work, Measurement& row)
    {
        const fs::path small = Small() / "input";
        const fs::path larger = work.grows ? Large() / "input" : small;
        const auto read = [&](const fs::path& input)
        {
            work.restore(input);
            return Child("once", {std::string(work.name), input.string()});
        };
        Alternated times;
        for (int i = 0; i < kLargeRepeats; ++i)
        {
            const double first = read(small).Get("seconds");
            const Measurement ofLarger = read(larger);
            times.Add(ofLarger.Get("seconds"), std::midpoint(first, read(small).Get("seconds")));
            row.Set("peak", ofLarger.Get("peak"));
            if (work.grows)
                row.Set("memory", ofLarger.Get("allocated") / SizeBelow(larger));
        }
        if (work.grows)
            row.Set("growth", times.Ratio());
    }

    // What is measured on the jobs beside their read.
    void MeasureWholeJob(const Measurement& read)
    {
        const Measurement threads = Child("threads", {Large().string()});
        Measurement row;
        row.Set("bytes", threads.Get("bytes"));
        row.Set("seconds", threads.Get("twoSeconds"));
        row.Set("ratio", threads.Get("speedUp"));
        PrintRow("whole job, 2 threads", row, ">= 1.80", "speed-up over 1 thread, elapsed time");

        PrintRow("unit change", Child("units", {Small().string()}), "", "multiplying as many numbers in one array");
        const fs::path output = m_scratch.Path() / "output";
        fs::create_directories(output / "job");
        PrintRow("write", Child("write", {Small().string(), Large().string(), output.string()}), "<= 1.30",
                 "printing the same numbers; MB of output");
        PrintRow("JSON (jobx json)", Child("json", {m_options.jobx, Small().string(), output.string()}), "",
                 "splitting the job and printing the same numbers; MB of output");
        fs::remove_all(output);

        Measurement destroy;
        destroy.Set("bytes", read.Get("bytes"));
        destroy.Set("seconds", read.Get("destroySeconds"));
        destroy.Set("ratio", read.Get("destroyRatio"));
        PrintRow("destroy", destroy, "", "freeing as many blocks");
        destroy.Set("ratio", read.Get("destroyShare"));
        PrintRow("destroy", destroy, "<= 0.15", "reading the same job");
        std::printf("%-38s %8.2f\n", "blocks per 100 bytes", 100.0 * read.Get("blocks") / read.Get("bytes"));
    }

    // Complete reading beside classic reading: of made jobs, and of all real ones.
    void MeasureBothWays()
    {
        std::printf("\ncomplete reading, compared with classic reading on 1 thread\n");
        for (const KindOfJob& kind : KindsOfJob())
        {
            kind.make(Small(), kCompared * m_options.scale);
            PrintWays(kind.title, Small() / "input");
            fs::remove_all(Small());
        }
        for (const fs::path& job : RealJobs())
            PrintWays(job.filename().c_str(), job);
        std::printf("\n");
    }
    void PrintWays(const char* name, const fs::path& job)
    {
        Measurement row = Child("ways", {job.string()});
        PrintRow(name, row, "<= 1.25", "classic reading");
        Measurement memory;
        memory.Set("ratio", row.Get("memoryRatio"));
        PrintRow("", memory, "<= 1.30", "the memory of classic reading");
    }
    std::vector<fs::path> RealJobs() const
    {
        std::vector<fs::path> jobs;
        if (fs::is_directory(m_options.realJobs))
            for (const auto& entry : fs::directory_iterator(m_options.realJobs))
                if (fs::exists(entry.path() / "matrix" / "matrix"))
                    jobs.push_back(entry.path());
        std::sort(jobs.begin(), jobs.end());
        return jobs;
    }

    void Info()
    {
        const std::vector<fs::path> jobs = RealJobs();
        if (jobs.empty())
        {
            std::printf("%-38s no real job; set JOBX_REAL_JOBS\n", "jobx info");
            return;
        }
        const Measurement info = Child("info", {m_options.jobx, jobs.front().string()});
        PrintRow("jobx info, real job", info, "<= 1.50", "reading and splitting its files; 1 thread");
        Measurement elapsed;
        elapsed.Set("bytes", info.Get("bytes"));
        elapsed.Set("seconds", info.Get("elapsedSeconds"));
        elapsed.Set("ratio", info.Get("elapsedRatio"));
        PrintRow("", elapsed, "<= 1.50", "the same; 2 threads, elapsed time");
    }

    const Options& m_options;
    Scratch m_scratch;
};

int Run(int argc, char** argv)
{
    Options options;
    CLI::App app("Measures reading, changing, writing and destroying jobs beside the least that each has to do.");
    app.add_option("--scale", options.scale, "Factor of all sizes; 0.1 is quick and rough")->capture_default_str();
    app.add_option("--jobx", options.jobx, "The program jobx");
    app.add_option("--real-jobs", options.realJobs, "A folder of real jobs; the first by name is for jobx info");
    app.add_option("--child", options.child)->group("");
    app.add_option("places", options.places)->group("");
    CLI11_PARSE(app, argc, argv);
    if (!options.child.empty())
        return RunAsChild(options);
    UseThreads(1); // an idle second thread would count as work
    Bench(options).Run();
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    try
    {
        return Run(argc, argv);
    }
    catch (const std::exception& problem)
    {
        std::fprintf(stderr, "error: %s\n", problem.what());
        return 1;
    }
}
