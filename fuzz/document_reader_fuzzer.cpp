// Fuzz target: any bytes as a project document, read and then walked through the model's faces.
#include "corvelle/ptr.h"
#include "documents/cvxmlreader.h"
#include "foundation/memorystream.h"
#include "model/cvproject.h"

#include <cstddef>
#include <cstdint>

namespace Halvorn {
namespace {

// Touches every reachable value, so that a reader bug that leaves a bad object fails here.
double walkParameters(IMediaParameterContainer* container) {
    double sum = 0.0;
    for (uint32 i = 0; container && i < container->getParameterCount(); ++i) {
        IMediaParameter* parameter = container->getParameter(i);
        sum += parameter->getNormalizedValue() + parameter->getUnit() + parameter->getStepCount();
    }
    return sum;
}

double walkChannel(IMediaChannel* channel) {
    if (!channel)
        return 0.0;
    double sum = channel->getAudioChannels() + channel->getDestination()[0];
    for (uint32 i = 0; i < channel->getDeviceCount(); ++i) {
        IMediaDevice* device = channel->getDevice(i);
        sum += device->getDeviceType() + device->getStatePath()[0] + device->getDeviceId()[0];
        sum += walkParameters(device->getParameters());
        if (IPtr<IMediaEqualizer> equalizer = queryInterface<IMediaEqualizer>(device))
            for (uint32 b = 0; b < equalizer->getBandCount(); ++b)
                sum += walkParameters(equalizer->getBand(b)->getParameters());
    }
    for (uint32 i = 0; i < channel->getSendCount(); ++i)
        sum += channel->getSend(i)->getType() + channel->getSend(i)->isEnabled();
    return sum;
}

double walkTrack(IMediaTrack* track) {
    double sum = track->getContentType() + walkChannel(track->getChannel());
    for (uint32 c = 0; c < track->getClipCount(); ++c) {
        IMediaClip* clip = track->getClip(c);
        sum += clip->getTime()->getStart() + clip->getFadeInTime();
        for (uint32 e = 0; e < clip->getEventCount(); ++e) {
            IMediaEvent* event = clip->getEvent(e);
            sum += event->getTime()->getDuration();
            if (IPtr<IMediaAudioEvent> audio = queryInterface<IMediaAudioEvent>(event))
                sum += audio->getPlaybackRate() + audio->getFilePath()[0];
        }
    }
    for (uint32 a = 0; a < track->getAutomationCount(); ++a) {
        IMediaAutomation* automation = track->getAutomation(a);
        for (uint32 p = 0; p < automation->getPointCount(); ++p)
            sum += automation->getPoint(p)->getTime() + automation->getPoint(p)->getValue();
    }
    for (uint32 t = 0; t < track->getTrackCount(); ++t)
        sum += walkTrack(track->getTrack(t));
    return sum;
}

} // namespace
} // namespace Halvorn

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Halvorn;
    MemoryStream stream(const_cast<uint8_t*>(data), size);
    IPtr<CvXmlReader> reader = newObject<CvXmlReader>();
    IPtr<CvProject> project = IPtr<CvProject>::adopt(reader->readProject(&stream));
    if (!project)
        return 0;
    volatile double sink = project->getTempo()->getValue();
    for (uint32 i = 0; i < project->getTrackCount(); ++i)
        sink = sink + walkTrack(project->getTrack(i));
    for (uint32 i = 0; i < project->getChannelCount(); ++i)
        sink = sink + walkChannel(project->getChannel(i));
    sink = sink + project->getFileAccessors().total();
    return 0;
}
