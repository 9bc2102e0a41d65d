#pragma once

#include <map>
#include <memory>
#include <string>

#include <rapidjson/document.h>
#include <rapidjson/schema.h>

/// The schemas of `openapi.json`.
class AnswerSchemas {
public:
    AnswerSchemas();

    /// What is wrong with an answer of the interface: a status that the operation does not have, or a body that is not
    /// as described. Empty if nothing is. `path` is the pattern of the operation, `method` in lower case.
    std::string ProblemOf(const std::string& method, const std::string& path, unsigned status, const std::string& body);

    /// The same for a value of one schema.
    std::string ProblemOf(const std::string& schema, const std::string& json);

    /// The operation for a path without its query; empty if there is none.
    std::string PatternOf(const std::string& path) const;

private:
    const rapidjson::Value* ResponseOf(const std::string& method, const std::string& path, unsigned status) const;
    const rapidjson::SchemaDocument& SchemaNamed(const std::string& name);

    rapidjson::Document description;
    std::map<std::string, std::unique_ptr<rapidjson::SchemaDocument>> schemas;
};
