#include "cinder/VocabularyCommands.h"

#include "cinder/FormatOptions.h"
#include "cinder/OptionValues.h"
#include "cinder/StandardStreams.h"
#include "cinder/UsageError.h"
#include "cinder/vocabulary/ParameterList.h"
#include "cinder/vocabulary/RoutingLists.h"
#include "params/tree/StandaloneParameters.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <limits>
#include <memory>
#include <optional>
#include <string>

namespace cinder {

namespace {

/// NAME and one text more.
struct Question {
    std::string name, text;
};

std::shared_ptr<Question> addQuestion(CLI::App& command, const char* argument, const char* what) {
    const auto question = std::make_shared<Question>();
    command.add_option("NAME", question->name, "A parameter's name, or its id")
        ->type_name("")
        ->required();
    command.add_option(argument, question->text, what)->type_name("")->required();
    return question;
}

void print(const std::string& text) {
    std::cout << text;
    requirePrinted();
}

/// A number that is typed as it is listed is the float it was listed from.
std::optional<float> parseFloat(const std::string& text) {
    constexpr double largest{std::numeric_limits<float>::max()};
    const auto number = parseNumber(text);
    if (!number) return std::nullopt;
    return static_cast<float>(std::clamp(*number, -largest, largest));
}

void printValue(const Question& question) {
    const StandaloneParameters tree;
    const AbstractPluginParameter& parameter = findParameter(tree, question.name);
    print(numberText(valueOf(parameter, question.text)) + '\n');
}

void printText(const Question& question) {
    const StandaloneParameters tree;
    const AbstractPluginParameter& parameter = findParameter(tree, question.name);
    const auto value = parseFloat(question.text);
    if (!value || *value < parameter.minimum() || *value > parameter.maximum())
        throw UsageError("the stored value of " + parameter.getName() + " is a number from " +
                         numberText(parameter.minimum()) + " to " +
                         numberText(parameter.maximum()) + ", not \"" + question.text + "\"");
    print(parameter.text(*value) + '\n');
}

constexpr const char* listingFooter =
    R"(Without GET or TEXT, lists all parameters in the order of their ids: range and
default as they are stored, the text of the default, its place between 0 and 1,
and the modulation target that the parameter is the base of.

)";
constexpr const char* conversionFooter =
    R"(Examples:
  cinder params --csv > parameters.csv
  cinder params get "Band 2 Feedback Frequency" A4
      8.78136, the value that is stored for 440 Hz
  cinder params text "Band 2 Drive" 0.7
      70.00%
  cinder params get 8 50%
      by id; half of the range, where the parameter itself has no percents
  cinder params get "Input Pan" -- -.5
      behind --, as all that begins with a dash and no digit)";

}  // namespace

void addParamsCommand(CLI::App& program) {
    CLI::App* const command =
        program.add_subcommand("params", "List the parameters, or convert a value");
    const auto options = addFormatOptions(*command);
    command->require_subcommand(0, 1);
    command->footer(conversionFooter);  // that of GET and TEXT too, which take it over

    CLI::App* const get = command->add_subcommand("get", "Print the value that a text stands for");
    const auto typed = addQuestion(*get, "TEXT", "What a user might type");
    get->callback([typed] { printValue(*typed); });
    CLI::App* const text = command->add_subcommand("text", "Print how a stored value reads");
    const auto stored = addQuestion(*text, "VALUE", "A number within the parameter's range");
    text->callback([stored] { printText(*stored); });

    command->footer(std::string(listingFooter) + conversionFooter);
    command->callback([command, options] {
        if (!command->get_subcommands().empty()) return;
        print(textOf(parameterListing(StandaloneParameters()), options->format()));
    });
}

void addSourcesCommand(CLI::App& program) {
    CLI::App* const command = program.add_subcommand("sources", "List the modulation sources");
    const auto options = addFormatOptions(*command);
    command->callback([options] { print(textOf(sourceListing(), options->format())); });
}

void addTargetsCommand(CLI::App& program) {
    CLI::App* const command = program.add_subcommand("targets", "List the modulation targets");
    const auto options = addFormatOptions(*command);
    command->callback(
        [options] { print(textOf(targetListing(StandaloneParameters()), options->format())); });
}

}  // namespace cinder
