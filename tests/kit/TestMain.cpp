#include <cstdio>

#include <gtest/gtest.h>

/// Like GoogleTest's own main, but a filter without matches fails, so that a renamed suite is noticed.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    if (!GTEST_FLAG_GET(list_tests) && testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
        std::fputs("No test matched the filter.\n", stderr);
        return 1;
    }
    return result;
}
