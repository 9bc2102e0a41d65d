#include "engine/RecordCopies.h"

#include <utility>

#include "platform/system/NeverDestroyed.h"

RecordCopies& RecordCopies::OfProcess() {
    static RecordCopies& copies = platform::MakeNeverDestroyed<RecordCopies>();
    return copies;
}

RecordCopies::Records RecordCopies::Take() {
    const std::scoped_lock lock(mutex);
    return std::exchange(kept, {});
}

void RecordCopies::Keep(Records&& records, Time now) {
    const std::scoped_lock lock(mutex);
    std::swap(kept, records);
    lastUse = now;
}

void RecordCopies::ReleaseRested(Time now) {
    Records released;
    const std::scoped_lock lock(mutex);
    if (now - lastUse >= longestRest) {
        std::swap(kept, released);
    }
}

void RecordCopies::Update(Records& records, const Entries& entries) {
    records.resize(entries.size());
    if (records.size() < records.capacity() / 2) {
        records.shrink_to_fit();
    }
    auto record = records.begin();
    for (const auto& entry : entries) {
        if (*record != entry->GetJobListInfo()) {
            *record = entry->GetJobListInfo();
        }
        ++record;
    }
}
