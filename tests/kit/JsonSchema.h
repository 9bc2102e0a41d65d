#pragma once

#include <string>

/// JSON Schema in tests.
namespace test_support {

/// Returns why `json` does not conform to the schema with this name ("settings") of the build; empty if it does.
/// `isClosed`: members that the schema does not name are errors, even if it allows them.
std::string SchemaProblem(const std::string& schema, const std::string& json, bool isClosed = false);

/// The text of this schema.
std::string SchemaText(const std::string& schema);

} // namespace test_support
