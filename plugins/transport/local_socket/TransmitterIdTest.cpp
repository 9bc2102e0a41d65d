#include "transport/local_socket/TransmitterId.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace {

using local_socket::End;
using local_socket::ParseTransmitterId;
using local_socket::TransmitterId;

TEST(TransmitterIdTest, SaysTheEndAndTheEndpointAddress) {
    EXPECT_EQ(ParseTransmitterId(L"engine:host"), (TransmitterId{End::Server, "host"}));
    EXPECT_EQ(ParseTransmitterId(L"client:host"), (TransmitterId{End::Client, "host"}));
    EXPECT_EQ(ParseTransmitterId(L"client:AZaz09_.-"), (TransmitterId{End::Client, "AZaz09_.-"}));
    EXPECT_EQ(ParseTransmitterId(L"engine:" + std::wstring(64, L'n')),
              (TransmitterId{End::Server, std::string(64, 'n')}));
}

TEST(TransmitterIdTest, OtherTextsAreRefused) {
    for (const std::wstring& text :
         {std::wstring(), std::wstring(L"host"), std::wstring(L"engine:"), std::wstring(L"engine"),
          std::wstring(L"Engine:host"), std::wstring(L" engine:host"), std::wstring(L"server:host"),
          std::wstring(L"engine:a b"), std::wstring(L"engine:a/b"), std::wstring(L"engine:..\\b"),
          std::wstring(L"engine:a:b"), std::wstring(L"client:\u00e4"), std::wstring(L"client:a\0b", 10),
          L"client:" + std::wstring(65, L'n')}) {
        EXPECT_EQ(ParseTransmitterId(text), std::nullopt);
    }
}

} // namespace
