#include "kit/JsonSchema.h"

#include <rapidjson/document.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>

#include "kit/TemporaryDirectory.h"
#include "platform/system/Environment.h"
#include "platform/system/Installation.h"
#include "text/Text.h"

namespace test_support {
namespace {

/// Forbids unknown members of each object that names members.
void Close(rapidjson::Value& schema, rapidjson::Document::AllocatorType& allocator) {
    if (schema.IsArray()) {
        for (rapidjson::Value& each : schema.GetArray()) {
            Close(each, allocator);
        }
    }
    if (!schema.IsObject()) {
        return;
    }
    for (auto& member : schema.GetObject()) {
        Close(member.value, allocator);
    }
    const auto properties = schema.FindMember("properties");
    const bool isSchema = properties != schema.MemberEnd() && properties->value.IsObject() && schema.HasMember("type");
    if (isSchema && !schema.HasMember("additionalProperties")) {
        schema.AddMember("additionalProperties", false, allocator);
    }
}

std::string TextOf(const rapidjson::Pointer& pointer) {
    rapidjson::StringBuffer text;
    pointer.StringifyUriFragment(text);
    return text.GetString();
}

} // namespace

std::string SchemaText(const std::string& schema) {
    return ReadTextFile(
        platform::InstalledData(L"schemas\\" + text::FromUtf8(schema) + L".schema.json", platform::ProgramDirectory()));
}

std::string SchemaProblem(const std::string& schema, const std::string& json, bool isClosed) {
    rapidjson::Document description;
    description.Parse(SchemaText(schema).c_str());
    rapidjson::Document document;
    document.Parse(json.c_str());
    if (description.HasParseError() || document.HasParseError()) {
        return "no JSON: " + (description.HasParseError() ? schema : json);
    }
    if (isClosed) {
        Close(description, description.GetAllocator());
    }
    const rapidjson::SchemaDocument rules(description);
    rapidjson::SchemaValidator validator(rules);
    if (document.Accept(validator)) {
        return {};
    }
    return TextOf(validator.GetInvalidDocumentPointer()) + " violates " + validator.GetInvalidSchemaKeyword() + " in " +
           json;
}

} // namespace test_support
