// Reads the small job completely with one of its files replaced.
#pragma once

#include "reading/SmallJob.h"

#include "foundation/CJOBXProperty.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

using Strings = std::vector<std::string>;

inline std::string TextOf(const CString& text)
{
    return std::string(text.View());
}

// The properties as "name/kind/value" with a blank behind each; "" for null.
inline std::string TextOf(const CJOBXPropertyArray* properties)
{
    std::string text;
    if (properties != nullptr)
        for (const CJOBXProperty& property : properties->Records())
            text += TextOf(property.m_sName) + '/' + std::to_string(static_cast<int>(property.GetKind())) + '/' +
                    TextOf(property.m_sValue) + ' ';
    return text;
}

struct CompleteRead
{
    CompleteRead(const std::string& file, const std::string& text) : CompleteRead(SmallJob(), file, text) {}
    // Of a small job that was changed before.
    CompleteRead(const SmallJob& small, const std::string& file, const std::string& text)
    {
        small.Write(file, text);
        RecordedMessages sink;
        job = small.Read(sink.Reading());
        messages = sink.lines;
        for (const std::string& message : messages)
            if (message.starts_with(file + ':'))
                codes.push_back(WithoutSentence(message.substr(file.size() + 1)));
    }

    std::unique_ptr<CJOBX> job;
    Strings messages;
    Strings codes; // of the messages about this file: "line: severity code"

private:
    static std::string WithoutSentence(const std::string& message)
    {
        return message.substr(0, message.find(' ', message.find(' ', message.find(' ') + 1) + 1));
    }
};

// What a text behind `before` in that file brings about.
struct TextAndCodes
{
    const char* text;
    Strings codes;
};

inline void ExpectCodes(const char* file, const std::string& before, std::initializer_list<TextAndCodes> cases)
{
    for (const TextAndCodes& one : cases)
        EXPECT_EQ(CompleteRead(file, before + one.text).codes, one.codes) << one.text;
}
