#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include "formats/Boundary.h"
#include "formats/JobListFile.h"
#include "formats/MessageText.h"
#include "formats/json/Reading.h"
#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
#include "platform/system/Machine.h"
#include "text/StrictUtf8.h"
#include "text/Wtf8.h"

namespace {

bool LogFailedWrite(const std::wstring& path, const std::wstring& reason) {
    ControllerCSWrapper::WriteErrorLog(L"The file cannot be written: " + platform::ToNativeText(path) + L": " + reason);
    return false;
}

bool IsJobList(const std::wstring& path) {
    return platform::SameName(path, ControllerCSWrapper::GetJobListFile());
}

} // namespace

bool ControllerCSWrapper::CreateJsonFile(const std::wstring& json, const std::wstring& path) {
    return boundary::Guard("CreateJsonFile", [&] {
        std::string bytes;
        std::size_t badAt = 0;
        if (json.empty()) {
            return LogFailedWrite(path, L"there is no text to write");
        }
        bytes.reserve(text::RoomForAscii(json.size()));
        platform::PreferLargePages(bytes.data(), bytes.capacity());
        if (!text::EncodeUtf8(json, bytes, badAt)) {
            return LogFailedWrite(path,
                                  L"character " + std::to_wstring(badAt + 1) + L" of the text is not a character");
        }
        if (IsJobList(path)) {
            return job_list_file::Write(path, bytes);
        }
        const platform::Error result = platform::ReplaceFile(path, bytes);
        return result || LogFailedWrite(path, result.Text());
    });
}

bool ControllerCSWrapper::ReadJsonFile(const std::wstring& path, std::wstring& text) {
    return boundary::Guard("ReadJsonFile", [&] {
        std::string bytes;
        std::wstring problem;
        if (!json::LoadFile(path, json::largestText, bytes, problem)) {
            WriteErrorLog(L"The file cannot be read: " + problem);
            return false;
        }
        if (!json::ReadSlot(bytes, json::Slot(), problem)) {
            WriteErrorLog(L"The file cannot be read: " + json::ProblemInFile(path, problem));
            return false;
        }
        text = text::FromTrustedWtf8(std::string_view(bytes).substr(text::ByteOrderMarkLength(bytes)));
        return true;
    });
}

bool ControllerCSWrapper::ParseJobList(const std::wstring& path, std::vector<JobListInfo>& records) {
    return boundary::Guard("ParseJobList", [&] {
        std::vector<JobListInfo> list;
        if (!job_list_file::Read(path, list)) {
            return false;
        }
        message_text::AppendAll(records, std::move(list));
        return true;
    });
}
