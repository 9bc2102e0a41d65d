#include "front_end/connection/DamagedListNotice.h"

#include "formats/JobListFile.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"

namespace front_end {

void DamagedListNotice::Tell() {
    for (const std::wstring& file : job_list_file::KeptAside(settings::Current()->jobListFile)) {
        if (told.insert(file).second) {
            const std::wstring words = context.texts.Format(L"Notes/DamagedList", {platform::ToNativeText(file)});
            context.console.WriteError(context.program + L": " + words + L"\n");
        }
    }
}

} // namespace front_end
