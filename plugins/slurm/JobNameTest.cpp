#include "slurm/JobName.h"

#include <gtest/gtest.h>

TEST(JobNameTest, ANameBelongsToOneListOfOneMachineAndToOneHost) {
    const std::wstring prefix = slurm::NamePrefix(L"submit1", L"\\home\\u\\job_list.json");
    EXPECT_NE(prefix, slurm::NamePrefix(L"submit2", L"\\home\\u\\job_list.json"));
    EXPECT_NE(prefix, slurm::NamePrefix(L"submit1", L"\\home\\v\\job_list.json"));
    const std::wstring name = slurm::NewJobName(prefix, L"0123abcd", L"3f9a0c1");
    EXPECT_TRUE(slurm::IsJobName(name));
    EXPECT_TRUE(slurm::IsOfEarlierHost(name, prefix, L"99999999"));
    EXPECT_FALSE(slurm::IsOfEarlierHost(name, prefix, L"0123abcd"));
    EXPECT_FALSE(slurm::IsOfEarlierHost(name, slurm::NamePrefix(L"submit2", L"\\x"), L"99999999"));
}

TEST(JobNameTest, EachAttemptHasANameOfItsOwn) {
    EXPECT_NE(slurm::NewJobName(L"controller-1-", L"2", L"3"), slurm::NewJobName(L"controller-1-", L"2", L"3"));
}

TEST(JobNameTest, WhatCouldBeAPathOrAnOptionIsNoName) {
    for (const wchar_t* const text : {L"", L"-controller-1", L"controller-../x", L"controller-a b", L"other-1"}) {
        EXPECT_FALSE(slurm::IsJobName(text));
    }
}
