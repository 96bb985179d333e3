#include "InfoCommand.h"

#include "CompactInfo.h"
#include "InfoJson.h"
#include "InfoText.h"
#include "JobSummary.h"

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
