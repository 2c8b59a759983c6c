// Host services, tracks, colours, media files, mixer children, parameters and routing for import.
#include "hostimport/importutilities.h"

namespace Halvorn {
namespace CvHostUtilities {

namespace {
struct ChannelLayout {
    uint32 count;
    uint32 mask;
};

constexpr ChannelLayout kLayouts[] = {
    {2, 0x3},      {3, 0x7},      {4, 0x107},    {5, 0x37},        {6, 0x3F},
    {7, 0x13F},    {8, 0xFF},     {9, 0x1FF},    {10, 0x2D03F},    {11, 0x2D83F},
    {12, 0x2D63F}, {13, 0x2FE37}, {14, 0x2FE3F}, {22, 0x7303FFF7},
};
constexpr uint32 kMonoMask = 0x80000;

const char8* trackTypeOf(uint32 contentType) {
    switch (contentType) {
    case kContentTracks:
        return "folder";
    case kContentAudio:
        return "audio";
    case kContentNotes:
        return "instrument";
    case kContentVideo:
        return "video";
    case kContentMarkers:
        return "marker";
    default:
        return nullptr;
    }
}

IPtr<IHostUrl> makeUrl(IHostContext* host, const String& path) {
    IPtr<IHostUrl> url = hostService<IHostUrl>(host);
    if (!url || url->setPath(path.text16(), 0) != kResultOk)
        return {};
    return url;
}
} // namespace

String getProjectFolderPath(IHostContext* host) {
    IPtr<IHostProjectManager> manager = hostService<IHostProjectManager>(host);
    IHostProject* project = manager ? manager->getActiveProject() : nullptr;
    IHostUrl* folder = project ? project->getProjectFolder() : nullptr;
    char16 buffer[IHostUrl::kPathSize] = {};
    if (!folder || folder->getPath(buffer) != kResultOk)
        return {};
    buffer[IHostUrl::kPathSize - 1] = 0;
    String path(buffer);
    path.replace(String("\\"), String("/"));
    return path;
}

FUnknown* findTrackOfType(IHostProject* project, const char8* type) {
    IPtr<IHostTimelineObject> root = queryInterface<IHostTimelineObject>(project);
    if (!root)
        return nullptr;
    IPtr<IHostIterator> children = IPtr<IHostIterator>::adopt(root->getChildren());
    while (children && !children->isDone()) {
        FUnknown* child = children->next();
        IPtr<IHostObjectType> track = queryInterface<IHostObjectType>(child);
        if (track && track->isType(type))
            return child;
    }
    return nullptr;
}

IPtr<IHostObjectType> createTrackFor(IHostProject* project, IMediaTrack* track) {
    const char8* type = track ? trackTypeOf(track->getContentType()) : nullptr;
    if (!project || !type)
        return {};
    return IPtr<IHostObjectType>::adopt(project->createTrack(type));
}

IPtr<IHostObjectType> createChannelTrack(IHostProject* project, uint32 role) {
    const char8* type = role == kChannelRoleEffect   ? "FX Channel"
                        : role == kChannelRoleSubmix ? "Group Channel"
                                                     : nullptr;
    if (!project || !type)
        return {};
    return IPtr<IHostObjectType>::adopt(project->createTrack(type));
}

uint32 speakerMaskFromChannels(uint32 count) {
    for (const ChannelLayout& layout : kLayouts)
        if (layout.count == count)
            return layout.mask;
    return kMonoMask;
}

bool setTrackArrangement(FUnknown* track, uint32 audioChannels) {
    IPtr<IHostTrackBus> bus = queryInterface<IHostTrackBus>(track);
    return bus && bus->setArrangement(speakerMaskFromChannels(audioChannels)) == kResultOk;
}

void setTrackLoaded(IHostContext* host, FUnknown* track, bool loaded) {
    if (IPtr<IHostProjectTools> tools = hostService<IHostProjectTools>(host))
        tools->setTrackLoaded(track, loaded);
}

bool packColor(IMediaObject* object, uint32* argb) {
    IMediaColor* color = object ? object->getColor() : nullptr;
    if (!color || !argb)
        return false;
    uint32 packed = uint32(color->getAlpha()) << 24 | uint32(color->getRed()) << 16 |
                    uint32(color->getGreen()) << 8 | uint32(color->getBlue());
    if (packed == 0)
        return false;
    *argb = packed;
    return true;
}

void applyName(FUnknown* track, IMediaObject* object, ImportSessions& sessions) {
    IPtr<IHostTimelineEvent> event = queryInterface<IHostTimelineEvent>(track);
    if (event && object && sessions.outer && sessions.context)
        event->setName(sessions.context.get(), object->getName(), sessions.outer.get());
}

void applyColor(FUnknown* track, IMediaObject* object, ImportSessions& sessions) {
    IPtr<IHostTimelineEvent> event = queryInterface<IHostTimelineEvent>(track);
    uint32 argb = 0;
    if (event && sessions.context && packColor(object, &argb))
        event->setColor(sessions.context.get(), argb, nullptr);
}

IHostMediaFile* findPoolFile(IHostContext* host, IHostProject* project, const String& path) {
    IHostMediaPool* pool = host && project ? project->getMediaPool() : nullptr;
    if (!pool)
        return nullptr;
    IPtr<IHostUrl> url = makeUrl(host, path);
    return url ? pool->findFile(url.get()) : nullptr;
}

IPtr<IHostAudioClip> createAudioClip(IHostContext* host, const String& path) {
    IPtr<IHostAudioFile> file = hostService<IHostAudioFile>(host);
    IPtr<IHostUrl> url = file ? makeUrl(host, path) : IPtr<IHostUrl>();
    if (!url || !file->open(url.get()))
        return {};
    IPtr<IHostAudioFileInfo> info = queryInterface<IHostAudioFileInfo>(file.get());
    IPtr<IHostAudioClip> clip = info ? hostService<IHostAudioClip>(host) : nullptr;
    if (!clip || !clip->setFile(info.get()))
        return {};
    return clip;
}

IPtr<IHostMediaFile> createVideoClip(IHostContext* host, const String& path) {
    IPtr<IHostUrl> url = makeUrl(host, path);
    IPtr<IHostVideoClip> clip = url ? hostService<IHostVideoClip>(host) : nullptr;
    IPtr<IHostMediaFile> file = queryInterface<IHostMediaFile>(clip.get());
    if (!file || file->load(url.get()) != kResultOk)
        return {};
    return file;
}

IHostParameterOwner* getMixerChannel(FUnknown* track) {
    IPtr<IHostTrackChannel> channel = queryInterface<IHostTrackChannel>(track);
    return channel ? channel->getMixerChannel() : nullptr;
}

bool setParameterValue(IHostParameterOwner* owner, const char8* id, float value) {
    IPtr<IHostParameter> parameter =
        owner ? IPtr<IHostParameter>::adopt(owner->findParameter(id)) : nullptr;
    if (!parameter)
        return false;
    parameter->setValue(value, true);
    return true;
}

void setOutputDestination(IHostParameterOwner* source, IHostParameterOwner* destination) {
    if (IPtr<IHostOutputRouting> routing = queryInterface<IHostOutputRouting>(source))
        routing->setDestination(destination);
}

} // namespace CvHostUtilities
} // namespace Halvorn
