#include "json/JsonCommand.h"

#include "output/ExitError.h"
#include "json/RecordJson.h"

void RunJson(const ReadOptions& options, TextBytes textBytes)
{
    const ReadJob read = ReadJobDirectory(options);
    Output output;
    JsonOutput json(output, textBytes);
    json.Object(
        [&]
        {
            json.Member("result", read.result);
            WriteFields(json, *read.job);
        });
    json.Finish();
    if (read.result == 0)
        throw ExitError(ExitCode::UnreadableInput, read.problem);
}
