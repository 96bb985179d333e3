#include "options/HelpText.h"

#include "output/Wrapping.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <sstream>

namespace
{
constexpr std::size_t kPageWidth = 80;
constexpr std::size_t kNameWidth = 26; // of options and commands, in front of their descriptions

class PageFormatter : public CLI::Formatter
{
public:
    PageFormatter(const std::string& purpose, const std::string& example)
        : m_example(example.empty() ? "" : fmt::format("Example:\n  # {}\n  {}\n\n", purpose, example))
    {
        column_width(kNameWidth);
    }

    std::string make_description(const CLI::App* app) const override
    {
        return fmt::format("{}{}\n\n", m_example, Wrapped(app->get_description(), kPageWidth, 0));
    }
    std::string make_option_opts(const CLI::Option* option) const override
    {
        const std::string type = option->get_items_expected_max() == 0 ? "" : option->get_type_name();
        return type.empty() ? type : " " + type;
    }
    std::string make_option_desc(const CLI::Option* option) const override
    {
        return Wrapped(option->get_description(), kPageWidth - kNameWidth, 0);
    }
    std::string make_subcommand(const CLI::App* command) const override
    {
        std::ostringstream line;
        CLI::detail::format_help(line, command->get_display_name(true),
                                 Wrapped(command->get_description(), kPageWidth - kNameWidth, 0), kNameWidth);
        return line.str();
    }

private:
    std::string m_example;
};
} // namespace

std::shared_ptr<CLI::FormatterBase> HelpFormatter(const std::string& purpose, const std::string& example)
{
    return std::make_shared<PageFormatter>(purpose, example);
}
