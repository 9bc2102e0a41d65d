#include "platform/terminal/LineEnd.h"

const std::string_view platform::lineEnd = "\r\n";
