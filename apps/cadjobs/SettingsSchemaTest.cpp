#include "services/Settings.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "kit/JsonSchema.h"
#include "kit/TemporaryDirectory.h"
#include "text/Text.h"

namespace {

using test_support::SchemaProblem;

/// The names of the properties, those of objects inside with dots.
void AppendNames(const rapidjson::Value& schema, const std::wstring& prefix, std::vector<std::wstring>& names) {
    if (!schema.HasMember("properties")) {
        return;
    }
    for (const auto& member : schema["properties"].GetObject()) {
        const std::wstring name = prefix + text::FromUtf8(member.name.GetString());
        names.push_back(name);
        AppendNames(member.value.HasMember("items") ? member.value["items"] : member.value, name + L".", names);
    }
}

class SettingsSchemaTest : public testing::Test {
protected:
    bool IsRead(const std::string& json) {
        WriteTextFile(directory / L"settings.json", json);
        settings::Settings read;
        std::wstring problem;
        std::vector<std::wstring> warnings;
        return settings::CheckFile(directory / L"settings.json", read, problem, warnings) && warnings.empty();
    }

    const TemporaryDirectory directory;
};

TEST_F(SettingsSchemaTest, TheSchemaKnowsExactlyTheMembersOfTheParser) {
    rapidjson::Document schema;
    schema.Parse(test_support::SchemaText("settings").c_str());
    ASSERT_FALSE(schema.HasParseError());
    std::vector<std::wstring> inSchema;
    AppendNames(schema, L"", inSchema);
    std::vector<std::wstring> inParser = settings::MemberNames();
    std::sort(inSchema.begin(), inSchema.end());
    std::sort(inParser.begin(), inParser.end());
    std::vector<std::wstring> different;
    std::set_symmetric_difference(inSchema.begin(), inSchema.end(), inParser.begin(), inParser.end(),
                                  std::back_inserter(different));
    EXPECT_EQ(different, std::vector<std::wstring>());
}

TEST_F(SettingsSchemaTest, TheSettingsInForceConformToTheSchema) {
    EXPECT_EQ(SchemaProblem("settings", text::ToUtf8(settings::Serialize(*settings::Current()))), "");
}

TEST_F(SettingsSchemaTest, WhatTheParserTakesTheSchemaTakes) {
    for (const char* const json :
         {R"({})", R"({"version":1,"parallelJobs":"auto"})", R"({"parallelJobs":60})", R"({"logFile":""})",
          R"({"interpreters":{".rb":["ruby","-w"]}})", R"({"resources":{"cad.licence-2":1}})",
          R"({"jobDefaults":{"timeLimit":"2h","retryDelay":30}})", R"({"afterRestart":"queued"})",
          R"({"scenarioDirectories":[{"path":"a"},{"path":"b","label":"B"}]})", R"({"hooks":{"jobEnded":["mail"]}})",
          R"({"slurm":{"cpus":4096,"options":["--qos=high"]}})", R"({"web":{"port":0,"publicAddress":""}})",
          R"({"toolVersions":{"mesher":"2.1"}})"}) {
        EXPECT_TRUE(IsRead(json)) << json;
        EXPECT_EQ(SchemaProblem("settings", json), "");
    }
}

/// Without names of resources and the like: the validator does not know "propertyNames".
TEST_F(SettingsSchemaTest, WhatTheParserRefusesTheSchemaRefuses) {
    for (const char* const json : {R"([])",
                                   R"({"version":2})",
                                   R"({"versoin":1})",
                                   R"({"parallelJobs":0})",
                                   R"({"parallelJobs":501})",
                                   R"({"parallelJobs":"all"})",
                                   R"({"workDirectory":""})",
                                   R"({"workDirectory":7})",
                                   R"({"logLevel":"loud"})",
                                   R"({"autoDeleteWorkFolder":{"days":0}})",
                                   R"({"autoDeleteWorkFolder":{"weeks":1}})",
                                   R"({"scenarioDirectories":[{"label":"B"}]})",
                                   R"({"scenarioDirectories":"a"})",
                                   R"({"culture":""})",
                                   R"({"transmitterName":"a b"})",

                                   R"({"interpreters":{".rb":[]}})",
                                   R"({"cancelGraceSeconds":3601})",
                                   R"({"scenarioLogLimitBytes":4095})",
                                   R"({"resources":{"a":0}})",
                                   R"({"ageingMinutes":0})",
                                   R"({"afterRestart":"maybe"})",
                                   R"({"slurm":{"cpus":4097}})",
                                   R"({"web":{"port":65536}})",
                                   R"({"web":{"publicAddress":"ftp://a"}})",
                                   R"({"slurm":{"lostAfterSeconds":0}})",
                                   R"({"provenance":"yes"})",
                                   R"({"jobDefaults":{"retries":101}})",
                                   R"({"jobDefaults":{"timeLimit":"soon"}})",
                                   R"({"jobDefaults":{"cpuLimitPercent":100001}})",
                                   R"({"hooks":{"jobEnded":[""]}})"}) {
        EXPECT_FALSE(IsRead(json)) << json;
        EXPECT_NE(SchemaProblem("settings", json), "") << json;
    }
}

} // namespace
