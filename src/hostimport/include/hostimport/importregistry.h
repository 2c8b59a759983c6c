// The importer's registries: model id to host object, and the host tracks made, both indexed so
// that a large project imports in linear time while the first entry of an id still wins.
#pragma once

#include "corvelle/ptr.h"
#include "foundation/fstring.h"
#include "hostapi/hostapi.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace Halvorn {

// Every host object that a model id stands for: channels, sends, plug-ins. An entry's object may
// be null (a channel of a track without a mixer channel); it still counts as found.
class CvDeviceRegistry {
public:
    struct Entry {
        String id;
        IHostParameterOwner* object; // borrowed: the host's tree outlives the import
    };

    void add(const String& id, IHostParameterOwner* object);
    // The first entry of this id, or null.
    const Entry* find(const char16* id) const;

private:
    std::vector<Entry> entries_;
    std::unordered_map<std::u16string, size_t> first_;
};

// Every host track that was made for a model track, in order.
class CvTrackRegistry {
public:
    void add(FUnknown* track);
    // The first track whose mixer channel is this one, or null; borrowed.
    FUnknown* findByMixerChannel(IHostParameterOwner* channel) const;

private:
    // Held so that a track the host refused to add stays valid until the import ends.
    std::vector<IPtr<FUnknown>> tracks_;
    std::unordered_map<IHostParameterOwner*, FUnknown*> byChannel_;
};

} // namespace Halvorn
