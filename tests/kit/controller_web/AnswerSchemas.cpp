#include "kit/controller_web/AnswerSchemas.h"

#include "controller_web/api/Description.h"

#include <stdexcept>
#include <vector>

#include <rapidjson/pointer.h>
#include <rapidjson/stringbuffer.h>

namespace {

constexpr const char* schemasPlace = "#/components/schemas/";
constexpr const char* responsesPlace = "#/components/responses/";

std::vector<std::string> PartsOf(const std::string& path) {
    std::vector<std::string> parts;
    for (std::size_t begin = 1; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        parts.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

bool Matches(const std::vector<std::string>& pattern, const std::vector<std::string>& path) {
    const bool isOpen = pattern.back() == "{path}";
    if (isOpen ? path.size() < pattern.size() : path.size() != pattern.size()) {
        return false;
    }
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        if (pattern[index].front() != '{' && pattern[index] != path[index]) {
            return false;
        }
    }
    return true;
}

std::string AfterPlace(const rapidjson::Value& reference, const std::string& place) {
    const std::string text = reference.GetString();
    return text.substr(place.size());
}

} // namespace

AnswerSchemas::AnswerSchemas() {
    description.Parse(web::description);
    if (description.HasParseError()) {
        throw std::runtime_error("openapi.json is no JSON");
    }
}

std::string AnswerSchemas::PatternOf(const std::string& path) const {
    const std::vector<std::string> parts = PartsOf(path);
    std::string variable;
    for (const auto& entry : description["paths"].GetObject()) {
        const std::string pattern = entry.name.GetString();
        if (pattern == path) {
            return pattern;
        }
        if (Matches(PartsOf(pattern), parts) && (variable.empty() || pattern.find("files.zip") != std::string::npos)) {
            variable = pattern;
        }
    }
    return variable;
}

const rapidjson::Value* AnswerSchemas::ResponseOf(const std::string& method, const std::string& path,
                                                  unsigned status) const {
    const auto entry = description["paths"].FindMember(path.c_str());
    if (entry == description["paths"].MemberEnd() || !entry->value.HasMember(method.c_str())) {
        return nullptr;
    }
    const rapidjson::Value& responses = entry->value[method.c_str()]["responses"];
    const auto response = responses.FindMember(std::to_string(status).c_str());
    if (response == responses.MemberEnd()) {
        return nullptr;
    }
    return response->value.HasMember("$ref")
               ? &description["components"]["responses"][AfterPlace(response->value["$ref"], responsesPlace).c_str()]
               : &response->value;
}

const rapidjson::SchemaDocument& AnswerSchemas::SchemaNamed(const std::string& name) {
    std::unique_ptr<rapidjson::SchemaDocument>& schema = schemas[name];
    if (schema == nullptr) {
        rapidjson::Document root(rapidjson::kObjectType);
        auto& allocator = root.GetAllocator();
        rapidjson::Value reference(rapidjson::kObjectType);
        reference.AddMember("$ref", rapidjson::Value((schemasPlace + name).c_str(), allocator), allocator);
        rapidjson::Value all(rapidjson::kArrayType);
        all.PushBack(reference, allocator);
        root.AddMember("allOf", all, allocator);
        root.AddMember("components", rapidjson::Value(description["components"], allocator), allocator);
        schema = std::make_unique<rapidjson::SchemaDocument>(root);
    }
    return *schema;
}

std::string AnswerSchemas::ProblemOf(const std::string& schema, const std::string& json) {
    rapidjson::Document value;
    value.Parse(json.c_str());
    if (value.HasParseError()) {
        return "no JSON: " + json;
    }
    rapidjson::SchemaValidator validator(SchemaNamed(schema));
    if (value.Accept(validator)) {
        return {};
    }
    rapidjson::StringBuffer place;
    validator.GetInvalidDocumentPointer().StringifyUriFragment(place);
    return std::string(place.GetString()) + " breaks " + validator.GetInvalidSchemaKeyword() + " of " + schema + ": " +
           json;
}

std::string AnswerSchemas::ProblemOf(const std::string& method, const std::string& path, unsigned status,
                                     const std::string& body) {
    const rapidjson::Value* const response = ResponseOf(method, path, status);
    if (response == nullptr) {
        return method + " " + path + " has no answer " + std::to_string(status) + ": " + body;
    }
    const rapidjson::Value* const schema = rapidjson::Pointer("/content/application~1json/schema/$ref").Get(*response);
    return schema == nullptr ? std::string() : ProblemOf(AfterPlace(*schema, schemasPlace), body);
}
