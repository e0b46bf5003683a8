#include "tools/cinder/Program.h"

#include <doctest/doctest.h>
#include <fcntl.h>
#include <unistd.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace cinder::test {

namespace {

std::string outputOf(const std::vector<std::string>& arguments) {
    const Program::Outcome outcome = Program::run(arguments);
    INFO(outcome.err);
    REQUIRE(outcome.status == 0);
    return outcome.out;
}

}  // namespace

TEST_CASE("params, sources, targets: a line each below the titles, in every form") {
    struct Case {
        std::string command, titles;
        int rows;
    };
    const Case cases[] = {
        {"params",
         "id,name,group,kind,unit,minimum,maximum,default,default text,normalised default,target,"
         "hint\n",
         899},
        {"sources", "source,name,kind,own targets\n", 34},
        {"targets",
         "target,name,parameter,range,minimum,maximum,depth,depth of an EF,depth of a snapped XLFO,"
         "notes\n",
         195},
    };
    for (const Case& row : cases) {
        INFO(row.command);
        const std::string csv = outputOf({row.command, "--csv"});
        CHECK(csv.substr(0, row.titles.size()) == row.titles);
        CHECK(std::count(csv.begin(), csv.end(), '\n') == row.rows + 1);
        const std::string table = outputOf({row.command});
        CHECK(std::count(table.begin(), table.end(), '\n') == row.rows + 1);
        CHECK(nlohmann::json::parse(outputOf({row.command, "--json"})).size() ==
              static_cast<std::size_t>(row.rows));
    }
    const auto list = nlohmann::json::parse(outputOf({"params", "--json"}));
    const auto& drive = list[25];
    CHECK(drive["name"] == "Band 2 Drive");
    CHECK(drive["unit"] == "%");
    CHECK(drive["maximum"] == 1);
    CHECK(drive["target"] == 20);
    CHECK(list[637]["target"] == nullptr);
}

TEST_CASE("params get, params text: from what is typed to what is stored, and back") {
    CHECK(outputOf({"params", "get", "Band 2 Drive", "70%"}) == "0.7\n");
    CHECK(outputOf({"params", "get", "band 2 drive", "70"}) == "0.7\n");
    CHECK(outputOf({"params", "get", "9", "smooth amp"}) == "6\n");
    CHECK(outputOf({"params", "text", "Band 2 Drive", "0.7"}) == "70.00%\n");
    CHECK(outputOf({"params", "text", "Band 2 Level", "-1"}) == "-INF dB\n");
    // Ends of a range as they are listed, and a note above it.
    CHECK(outputOf({"params", "text", "7", "3.321928"}) == "10.000 Hz\n");
    CHECK(outputOf({"params", "text", "20", "14.13571"}) == "18000 Hz\n");
    CHECK(outputOf({"params", "get", "7", "A9"}) == "9.965784\n");

    struct Case {
        std::vector<std::string> arguments;
        std::string complaint;
    };
    const Case cases[] = {
        {{"params", "get", "Drive", "3"}, "did you mean Band 1 Drive"},
        {{"params", "get", "899", "3"}, "there is no parameter"},
        {{"params", "get", "Band 1 Drive", "hot"}, "is no value of Band 1 Drive"},
        {{"params", "text", "Band 1 Drive", "1.5"}, "from 0 to 1"},
        {{"params", "text", "Band 1 Drive", "nan"}, "from 0 to 1"},
        {{"params", "get", "Band 1 Drive"}, "TEXT"},
        {{"params", "--csv", "--json"}, "--csv"},
    };
    for (const Case& row : cases) {
        INFO(row.complaint);
        const Program::Outcome outcome = Program::run(row.arguments);
        CHECK(outcome.status == 2);
        CHECK(outcome.out.empty());
        CHECK(outcome.err.find(row.complaint) != std::string::npos);
    }
}

TEST_CASE("params, styles: a list that is lost is a failure, a reader that leaves is none") {
    const auto toFullDisk = [] { ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO); };
    const auto toNobody = [] {
        int ends[2];
        if (::pipe(ends) == 0) ::dup2(ends[1], STDOUT_FILENO);
        ::close(ends[0]);
        ::close(ends[1]);
    };
    const std::vector<std::string> commands[] = {
        {"params", "--csv"}, {"params", "get", "0", "3"}, {"styles", "--style", "clean tube"}};
    for (const auto& arguments : commands) {
        INFO(arguments.front());
        const Program::Outcome lost = Program::run(arguments, toFullDisk);
        CHECK(lost.status == 1);
        CHECK(lost.err.find("standard output") != std::string::npos);
        CHECK(Program::run(arguments, toNobody).status == 0);
    }
}

}  // namespace cinder::test
