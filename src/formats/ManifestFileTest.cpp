#include "formats/ManifestFile.h"

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "text/Text.h"

using scenario_manifest::ParsePackageManifest;
using scenario_manifest::ParseScriptManifest;
using scenario_manifest::ScenarioManifest;

namespace {

struct Refused {
    std::string name;
    std::string json;
    std::wstring problem;
};

std::ostream& operator<<(std::ostream& stream, const Refused& refused) {
    return stream << refused.name;
}

std::string TestName(const testing::TestParamInfo<Refused>& info) {
    return info.param.name;
}

/// A script's description with one parameter.
std::string WithParameter(const std::string& members) {
    return R"({"parameterSets":[{"id":"s","parameters":[{)" + members + "}]}]}";
}

std::string WithSets(const std::string& sets) {
    return "{\"parameterSets\":[" + sets + "]}";
}

/// A valid package manifest with additional `members`.
std::string Package(const std::string& members) {
    return R"({"displayName":"d","entryPoint":"main.rb","interpreter":"ruby",)" + members + "}";
}

std::string Repeated(const std::string& element, int count) {
    std::string list = element;
    for (int index = 1; index < count; ++index) {
        list += "," + element;
    }
    return list;
}

class ManifestFileTest_RefusedScript : public testing::TestWithParam<Refused> {};
class ManifestFileTest_RefusedPackage : public testing::TestWithParam<Refused> {};

const std::vector<Refused> refusedScripts = {
    {"NotJson", "{\n\"version\":1,\n}", L"line 3, column 1: not JSON"},
    {"NewerVersion", R"({"version":2})", L"version: expected version 1"},
    {"NegativeLimit", R"({"timeLimitSeconds":-1})", L"line 1, column 21: timeLimitSeconds: expected a whole number"},
    {"LimitOfMoreThanAWeek", R"({"timeLimitSeconds":604801})", L"timeLimitSeconds: expected a whole number"},
    {"ExitCodeAsText", R"({"successExitCodes":["0"]})", L"successExitCodes[0]: expected a whole number"},
    {"NeedOfNothing", R"({"needs":{"cad":0}})", L"needs.cad: expected a whole number of at least 1"},
    {"NoExitCode", R"({"successExitCodes":[]})", L"successExitCodes: expected 1 to 256 exit codes"},
    {"ManyExitCodes", "{\"successExitCodes\":[" + Repeated("1", 257) + "]}", L"expected 1 to 256 exit codes"},
    {"SetWithoutId", WithSets(R"({"displayName":"x"})"), L"parameterSets[0]: the member \"id\" is missing"},
    {"EmptyId", WithSets(R"({"id":""})"), L"parameterSets[0].id: expected a name"},
    {"IdWithBlank", WithSets(R"({"id":"a b"})"), L"parameterSets[0].id: expected a name"},
    {"IdWithEqualsSign", WithSets(R"({"id":"a=b"})"), L"parameterSets[0].id: expected a name"},
    {"IdTwice", WithSets(R"({"id":"a"},{"id":"b"},{"id":"a"})"), L"parameterSets[2].id: expected an id of its own"},
    {"ManySets", WithSets(Repeated(R"({"id":"a"})", 101)), L"parameterSets: expected at most 100 elements"},
    {"ParameterWithoutName", WithParameter(R"("type":"text")"), L"the member \"name\" is missing"},
    {"ParameterTwice", WithSets(R"({"id":"s","parameters":[{"name":"a"},{"name":"a"}]})"),
     L"parameterSets[0].parameters[1].name: expected a name of its own"},
    {"ManyParameters", WithSets(R"({"id":"s","parameters":[)" + Repeated(R"({"name":"a"})", 101) + "]}"),
     L"parameterSets[0].parameters: expected at most 100 elements"},
    {"UnknownType", WithParameter(R"("name":"a","type":"float")"),
     L"parameterSets[0].parameters[0].type: expected \"text\", \"integer\""},
    {"DefaultAsNumber", WithParameter(R"("name":"a","defaultValue":1)"), L"defaultValue: expected a text"},
    {"DefaultOfAnotherType", WithParameter(R"("name":"a","type":"integer","defaultValue":"1.5")"),
     L"parameters[0].defaultValue: expected a value of the type \"integer\", found \"1.5\""},
    {"DefaultNotANumber", WithParameter(R"("name":"a","type":"number","defaultValue":"nan")"), L"the type \"number\""},
    {"DefaultInfinite", WithParameter(R"("name":"a","type":"number","defaultValue":"-inf")"), L"the type \"number\""},
    {"DefaultNoNumber", WithParameter(R"("name":"a","type":"number","defaultValue":"one")"), L"the type \"number\""},
    {"DefaultNoBoolean", WithParameter(R"("name":"a","type":"boolean","defaultValue":"yes")"), L"the type \"boolean\""},
    {"DefaultNotAllowed", WithParameter(R"("name":"a","defaultValue":"x","allowedValues":["y","z"])"),
     L"defaultValue: expected one of the allowed values, found \"x\""},
    {"AllowedOfAnotherType", WithParameter(R"("name":"a","type":"integer","allowedValues":["1","two"])"),
     L"allowedValues: expected values of the type \"integer\""},
    {"ChoiceOfNothing", WithParameter(R"("name":"a","type":"choice")"), L"allowedValues: expected what can be chosen"},
    {"ManyAllowedValues", WithParameter("\"name\":\"a\",\"allowedValues\":[" + Repeated("\"x\"", 1001) + "]"),
     L"allowedValues: expected at most 1000 elements"},
    {"LongValue", WithParameter(R"("name":"a","defaultValue":")" + std::string(4097, 'x') + "\""),
     L"defaultValue: expected a text of at most 4096"},
};

const std::vector<Refused> refusedPackages = {
    {"NoDisplayName", R"({"executable":"a"})", L"the member \"displayName\" is missing"},
    {"EmptyDisplayName", R"({"displayName":"","executable":"a"})", L"displayName: expected a text of 1 to 200"},
    {"NothingToRun", R"({"displayName":"d"})", L"expected either \"entryPoint\" with \"interpreter\""},
    {"TwoThingsToRun", Package(R"("executable":"a.exe")"), L"expected either \"entryPoint\" with \"interpreter\""},
    {"NoInterpreter", R"({"displayName":"d","entryPoint":"main.rb"})", L"interpreter: expected together with"},
    {"InterpreterOfExecutable", R"({"displayName":"d","executable":"a","interpreter":"ruby"})",
     L"interpreter: expected together with"},
    {"EntryPointOutside", R"({"displayName":"d","entryPoint":"../main.rb","interpreter":"ruby"})",
     L"entryPoint: expected the name of a file in the package"},
    {"InterpreterByPath", R"({"displayName":"d","entryPoint":"main.rb","interpreter":"/bin/sh"})",
     L"interpreter: expected the name of a program of 1 to 260 characters without its folder"},
    {"InterpreterOnADrive", R"({"displayName":"d","entryPoint":"main.rb","interpreter":"C:sh.exe"})",
     L"interpreter: expected the name of a program"},
    {"InterpreterOutside", R"({"displayName":"d","entryPoint":"main.rb","interpreter":"..\\sh.exe"})",
     L"interpreter: expected the name of a program"},
    {"EntryPointIsFolder", R"({"displayName":"d","entryPoint":"bin/","interpreter":"ruby"})",
     L"entryPoint: expected the name of a file in the package"},
    {"AbsoluteExecutable", R"({"displayName":"d","executable":"/bin/sh"})",
     L"executable: expected the name of a file in the package"},
    {"BackslashInExecutable", R"({"displayName":"d","executable":"bin\\a.exe"})",
     L"executable: expected the name of a file in the package"},
    {"ExtensionWithDot", Package(R"("inputs":[{"extensions":[".stl"]}])"), L"inputs[0].extensions[0]: expected a file"},
    {"EmptyExtension", Package(R"("inputs":[{"extensions":[""]}])"), L"inputs[0].extensions[0]: expected a file"},
    {"ManyInputs", Package("\"inputs\":[" + Repeated("{}", 101) + "]"), L"inputs: expected at most 100 elements"},
    {"ManyExtensions", Package("\"inputs\":[{\"extensions\":[" + Repeated("\"a\"", 101) + "]}]"),
     L"inputs.extensions: expected at most 100 elements"},
};

} // namespace

TEST_P(ManifestFileTest_RefusedScript, SaysWhatWasExpected) {
    ScenarioManifest manifest;
    std::wstring problem;
    std::vector<std::wstring> warnings;
    EXPECT_FALSE(ParseScriptManifest(GetParam().json, manifest, problem, warnings));
    EXPECT_NE(problem.find(GetParam().problem), std::wstring::npos) << text::ToUtf8(problem);
    EXPECT_EQ(manifest, ScenarioManifest());
}

INSTANTIATE_TEST_SUITE_P(Files, ManifestFileTest_RefusedScript, testing::ValuesIn(refusedScripts), TestName);

TEST_P(ManifestFileTest_RefusedPackage, SaysWhatWasExpected) {
    ScenarioManifest manifest;
    std::wstring problem;
    std::vector<std::wstring> warnings;
    EXPECT_FALSE(ParsePackageManifest(GetParam().json, manifest, problem, warnings));
    EXPECT_NE(problem.find(GetParam().problem), std::wstring::npos) << text::ToUtf8(problem);
    EXPECT_EQ(manifest, ScenarioManifest());
}

INSTANTIATE_TEST_SUITE_P(Files, ManifestFileTest_RefusedPackage, testing::ValuesIn(refusedPackages), TestName);

TEST(ManifestFileTest, TakesEveryMemberOfAPackage) {
    ScenarioManifest manifest;
    std::wstring problem;
    std::vector<std::wstring> warnings;
    ASSERT_TRUE(ParsePackageManifest(R"({"version":1,"displayName":"Mesh report",
        "inputs":[{"cadName":"STL","extensions":["stl","stla"]},{}],"entryPoint":"lib/main.rb","interpreter":"ruby",
        "timeLimitSeconds":604800,"successExitCodes":[0,3,-1],"needs":{"cadLicence":2},
        "parameterSets":[{"id":"fine","displayName":"Fine","description":"Two\nlines","parameters":[
          {"name":"size","type":"integer","defaultValue":"640","allowedValues":["320","640"]},{"name":"title"},
          {"name":"scale","type":"number","defaultValue":"-1.5e3"},{"name":"on","type":"boolean","defaultValue":"true"},
          {"name":"colour","type":"choice","allowedValues":["red",""]}]}]})",
                                     manifest, problem, warnings))
        << text::ToUtf8(problem);
    ScenarioManifest expected;
    expected.displayName = L"Mesh report";
    expected.inputs = {{L"STL", {L"stl", L"stla"}}, {L"", {}}};
    expected.entryPoint = L"lib/main.rb";
    expected.interpreter = L"ruby";
    expected.timeLimitSeconds = 604800;
    expected.successExitCodes = {0, 3, -1};
    expected.needs = {{L"cadLicence", 2}};
    expected.parameterSets = {{L"fine",
                               L"Fine",
                               L"Two\nlines",
                               {{L"size", L"integer", L"640", {L"320", L"640"}},
                                {L"title", L"text", L"", {}},
                                {L"scale", L"number", L"-1.5e3", {}},
                                {L"on", L"boolean", L"true", {}},
                                {L"colour", L"choice", L"", {L"red", L""}}}}};
    EXPECT_EQ(manifest, expected);
    EXPECT_TRUE(warnings.empty());
}

TEST(ManifestFileTest, TakesAnExecutable) {
    ScenarioManifest manifest;
    std::wstring problem;
    std::vector<std::wstring> warnings;
    ASSERT_TRUE(ParsePackageManifest(R"({"displayName":"d","executable":"bin/x.exe"})", manifest, problem, warnings));
    EXPECT_EQ(manifest.executable, L"bin/x.exe");
}

TEST(ManifestFileTest, LeavesDefaultsWhereAScriptSaysNothing) {
    ScenarioManifest manifest;
    std::wstring problem;
    std::vector<std::wstring> warnings;
    ASSERT_TRUE(ParseScriptManifest("{}", manifest, problem, warnings));
    EXPECT_EQ(manifest, ScenarioManifest());
}

TEST(ManifestFileTest, WarnsOfWhatAScriptsFileCannotSay) {
    ScenarioManifest manifest;
    std::wstring problem;
    std::vector<std::wstring> warnings;
    ASSERT_TRUE(ParseScriptManifest(R"({"displayName":"d"})", manifest, problem, warnings));
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(warnings[0], L"line 1, column 2: displayName: there is no such member");
}
