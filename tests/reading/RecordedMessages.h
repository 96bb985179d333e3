// Keeps the messages of a complete reading.
#pragma once

#include "reading/CJOBXreading.h"

#include <string>
#include <vector>

class RecordedMessages : public CJOBXmessageSink
{
public:
    void OnMessage(const CJOBXmessage& message) override { lines.emplace_back(message.Line().GetString()); }

    // A complete reading that says everything to this object.
    CJOBXreading Reading(int messagesPerCode = 10)
    {
        CJOBXreading reading;
        reading.way = JOBXway::Complete;
        reading.pSink = this;
        reading.nMessagesPerCode = messagesPerCode;
        return reading;
    }

    std::vector<std::string> lines;
};
