// Lookups of the importer's registries: hashed, first entry wins.
#include "hostimport/importregistry.h"
#include "hostimport/importutilities.h"

namespace Halvorn {

void CvDeviceRegistry::add(const String& id, IHostParameterOwner* object) {
    entries_.push_back(Entry{id, object});
    first_.emplace(std::u16string(id.text16()), entries_.size() - 1);
}

const CvDeviceRegistry::Entry* CvDeviceRegistry::find(const char16* id) const {
    if (!id)
        return nullptr;
    auto found = first_.find(std::u16string(id));
    return found == first_.end() ? nullptr : &entries_[found->second];
}

void CvTrackRegistry::add(FUnknown* track) {
    tracks_.emplace_back(track);
    if (IHostParameterOwner* channel = CvHostUtilities::getMixerChannel(track))
        byChannel_.emplace(channel, track);
}

FUnknown* CvTrackRegistry::findByMixerChannel(IHostParameterOwner* channel) const {
    auto found = channel ? byChannel_.find(channel) : byChannel_.end();
    return found == byChannel_.end() ? nullptr : found->second;
}

} // namespace Halvorn
