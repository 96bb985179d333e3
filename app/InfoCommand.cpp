#include "InfoCommand.h"

#include "InfoJson.h"
#include "InfoText.h"
#include "JobSummary.h"

void RunInfo(const ReadOptions& options, bool asJson)
{
    const std::unique_ptr<CJOBX> job = ReadGoodJob(options);
    const JobSummary summary(*job);
    Output output;
    if (asJson)
        PrintInfoJson(output, summary);
    else
        PrintInfoText(output, summary);
}
