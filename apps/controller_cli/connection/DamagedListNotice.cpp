#include "controller_cli/connection/DamagedListNotice.h"

#include "formats/JobListFile.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"

namespace controller_cli {

void DamagedListNotice::Tell() {
    for (const std::wstring& file : job_list_file::KeptAside(settings::Current()->jobListFile)) {
        if (told.insert(file).second) {
            const std::wstring words = context.texts.Format(L"Notes/DamagedList", {platform::ToNativeText(file)});
            context.console.WriteError(L"controller_cli: " + words + L"\n");
        }
    }
}

} // namespace controller_cli
