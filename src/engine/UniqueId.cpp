#include "engine/UniqueId.h"

#include "text/Hexadecimal.h"

std::wstring DrawUniqueId(const std::function<std::uint32_t()>& draw,
                          const std::function<bool(const std::wstring&)>& isTaken, std::set<std::wstring>& known) {
    while (true) {
        std::wstring id = text::HexadecimalText(draw());
        if (!isTaken(id) && known.insert(id).second) {
            return id;
        }
    }
}
