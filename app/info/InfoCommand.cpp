#include "info/InfoCommand.h"

#include "info/CompactInfo.h"
#include "info/InfoJson.h"
#include "info/InfoText.h"
#include "info/JobSummary.h"

void RunInfo(const ReadOptions& options, bool asJson, bool ofCompactModel)
{
    const std::unique_ptr<CJOBX> job = ReadGoodJob(options);
    Output output;
    if (ofCompactModel)
    {
        PrintCompactInfo(output, *job, asJson);
        return;
    }
    const JobSummary summary(*job);
    if (asJson)
        PrintInfoJson(output, summary);
    else
        PrintInfoText(output, summary);
}
