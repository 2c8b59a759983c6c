// CvStructureReader: reads the Structure element: tracks, channels, sends and devices.
#pragma once

#include "documents/cvschemaparameters.h"
#include "corvelle/ptr.h"
#include "documents/cvxmltree.h"

namespace Halvorn {

class CvChannel;
class CvDevice;
class CvParameter;
class CvParameterContainer;
class CvProject;
class CvTrack;

// Fills a project, borrowed for the reader's life, from a Structure node. Tracks come first, in
// document order and depth first; then the channels that stand directly in Structure. Track
// channels thus precede those in the project's channel list. An unknown name leaves out the
// one item that depended on it.
class CvStructureReader {
public:
    explicit CvStructureReader(CvProject* project) : project(project) {}

    void read(const CvXmlElement& structure);

private:
    [[nodiscard]] static IPtr<CvTrack> readTrack(const CvXmlElement& node);
    void readTrackChannel(const CvXmlElement& trackNode, CvTrack* track);
    void readTracks(const CvXmlElement& node, CvTrack* parent);
    [[nodiscard]] static IPtr<CvChannel> readChannel(const CvXmlElement& node);
    static void readSends(const CvXmlElement& channelNode, CvChannel* channel);
    static void readDevices(const CvXmlElement& channelNode, CvChannel* channel);
    [[nodiscard]] static IPtr<CvDevice> readDevice(const CvXmlElement& node);
    [[nodiscard]] static IPtr<CvDevice> readInstrument(const CvXmlElement& node, uint32 type, uint32 role,
                                                       const String& id);
    [[nodiscard]] static IPtr<CvDevice> readEqualizer(const CvXmlElement& node, uint32 role,
                                                      const String& id);
    // The labelled parameters of one of the tables that node has as first direct children,
    // in the order of the table.
    template <size_t N>
    static void readLabelledParameters(const CvXmlElement& node, CvParameterContainer* container,
                                       const CvSchema::LabelledParameter (&rows)[N],
                                       bool switchDefault);
    // A labelled parameter as a first direct child of node, if there is one.
    static void readLabelledParameter(const CvXmlElement& node, CvParameterContainer* container,
                                      const CvSchema::LabelledParameter& row, bool switchDefault);

    // A real parameter from an element with the given defaults; an empty name takes the
    // element's "name" attribute. Nothing is clamped or converted.
    [[nodiscard]] static IPtr<CvParameter> readRealParameter(const CvXmlElement& node, const String& name,
                                                             double value, double min, double max);
    // A two-step parameter of unit normalized from an element's Boolean "value".
    [[nodiscard]] static IPtr<CvParameter>
    readSwitchParameter(const CvXmlElement& node, const String& name, bool defaultValue);

    CvProject* project;
};

} // namespace Halvorn
