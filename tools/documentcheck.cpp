// The document walk of `corvelle check`: one pass with expat over project.xml, then the
// references resolved against the ids the pass collected.
#include "documentcheck.h"

#include "checkschema.h"

#include <expat.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace CorvelleTool {

namespace {

constexpr std::string_view kDocumentName = "project.xml";

// A reference by id, resolved once every id is known.
struct Reference {
    std::string id;
    std::string place;
};

// A clip on a lane, judged by the content of the track its lane names.
struct LaneClip {
    std::string track;
    int videos = 0;
    std::string place;
};

struct Frame {
    const ElementKind* kind = nullptr;    // null for an element the reader doesn't read
    const ElementKind* context = nullptr; // the nearest known kind, for what it finds deep
    std::string place;
    std::string track; // Lanes, Clips, Points: the track their clips or points go to
    bool hasTimeUnit = false;
    bool hasChildren = false;
    bool hasTarget = false;    // Points: a Target with a parameter
    bool holdsContent = false; // LaneClips: a clip with content
    bool saidText = false;
    bool dropped = false; // inside a Track the reader drops
    LaneClip clip;        // LaneClip
};

std::optional<double> strictReal(const std::string& text) {
    if (text.empty() || text.find_first_of("xXpP") != std::string::npos ||
        std::isspace(static_cast<unsigned char>(text.front())))
        return std::nullopt;
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (end != text.c_str() + text.size())
        return std::nullopt;
    return value;
}

bool isDecimal(const std::string& text) {
    if (text.empty() || text.size() > 19)
        return false;
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool isColor(const std::string& text) {
    if (text.size() != 7 && text.size() != 9)
        return false;
    return text[0] == '#' && std::all_of(text.begin() + 1, text.end(), [](char c) {
               return std::isxdigit(static_cast<unsigned char>(c));
           });
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

class Walk {
public:
    explicit Walk(XML_Parser parser) : parser_(parser) {}

    void start(const char* name, const char** attributes) {
        Frame frame;
        frame.place = place();
        if (!frames_.empty()) {
            frames_.back().hasChildren = true;
            frame.dropped = frames_.back().dropped;
        }
        const ElementKind* parent = frames_.empty() ? nullptr : frames_.back().kind;
        const ElementKind* context = frames_.empty() ? nullptr : frames_.back().context;
        if (frames_.empty()) {
            if (std::string_view(name) == "Project")
                frame.kind = &projectKind();
            else
                error("not-a-project", frame.place,
                      "the root element is " + quoted(name) + ", not \"Project\"");
        } else if (parent) {
            frame.kind = childKind(*parent, name);
            if (!frame.kind)
                unknownChild(*parent, name, frame.place);
        } else if (context) {
            frame.kind = deepKind(*context, name); // found below a wrapper the reader skips
        }
        frame.context = frame.kind ? frame.kind : context;
        if (frame.kind)
            enter(frame, name, attributes);
        frames_.push_back(std::move(frame));
    }

    void end() {
        Frame frame = std::move(frames_.back());
        frames_.pop_back();
        if (!frame.kind)
            return;
        const std::string_view kind = frame.kind->kind;
        if (kind == "Points" && !frame.hasTarget && frame.hasChildren)
            error("points-dropped", frame.place,
                  "Points without a Target naming a parameter: its points are dropped");
        // A lane whose track isn't there loses only what its clips or points hold: the writer's
        // lanes of tempo, signature and marker tracks hold empty clips.
        if ((kind == "Points" && frame.hasChildren) || (kind == "LaneClips" && frame.holdsContent))
            trackRefs_.push_back({frame.track, frame.place});
        if (kind == "LaneClip") {
            frames_.back().holdsContent |= frame.hasChildren;
            laneClips_.push_back(std::move(frame.clip));
        } else if ((kind == "Markers" || kind == "TimeSignatureAutomation") && frame.hasChildren &&
                   !frame.hasTimeUnit)
            useBeats(frame.place); // their times are beats unless they say otherwise
    }

    void text(std::string_view data) {
        if (frames_.empty() || !frames_.back().kind || frames_.back().saidText)
            return;
        if (data.find_first_not_of(" \t\r\n") == std::string_view::npos)
            return;
        frames_.back().saidText = true;
        warn("ignored-text", place(), "text inside an element; the reader drops it");
    }

    DocumentCheck finish() {
        resolve(trackRefs_, tracks_, Severity::kError, "unknown-track",
                "names no Track: its clips or points are dropped");
        resolve(channelRefs_, channels_, Severity::kWarning, "unknown-destination",
                "names no Channel");
        resolve(parameterRefs_, parameters_, Severity::kWarning, "unknown-target",
                "names no parameter: the automation drives nothing");
        for (const LaneClip& clip : laneClips_) {
            const auto track = tracks_.find(clip.track);
            if (track == tracks_.end())
                continue; // said as unknown-track
            const std::string& content = track->second;
            if (content == "video" && clip.videos != 1)
                warn("video-events", clip.place,
                     "a video clip with " + std::to_string(clip.videos) +
                         " Video elements; the reader takes the first, if any");
            else if (content != "audio" && content != "notes" && content != "video" &&
                     content != "audio notes")
                error("clip-dropped", clip.place,
                      "a Clip on a track of content " + quoted(content) + " is dropped");
        }
        if (!firstBeats_.empty() && !tempoOk_)
            warn("beats-without-tempo", firstBeats_,
                 "times in beats without a finite tempo above 0; they convert at 120 bpm");
        return std::move(result_);
    }

private:
    std::string place() const {
        return std::string(kDocumentName) + ":" +
               std::to_string(XML_GetCurrentLineNumber(parser_)) + ":" +
               std::to_string(XML_GetCurrentColumnNumber(parser_) + 1);
    }

    void add(Severity severity, std::string code, std::string place, std::string message) {
        result_.findings.push_back(
            {severity, std::move(code), std::move(place), std::move(message)});
    }
    void warn(std::string code, std::string place, std::string message) {
        add(Severity::kWarning, std::move(code), std::move(place), std::move(message));
    }
    void error(std::string code, std::string place, std::string message) {
        add(Severity::kError, std::move(code), std::move(place), std::move(message));
    }

    void unknownChild(const ElementKind& parent, const char* name, const std::string& at) {
        if (parent.kind == "Devices")
            error("unknown-device", at,
                  quoted(name) + " is no device kind: it and every device after it are dropped");
        else
            warn("unknown-element", at,
                 quoted(name) + " is no element of the format inside " + std::string(parent.kind) +
                     "; the reader skips it");
    }

    const Frame* enclosing(std::string_view kind) const {
        for (auto frame = frames_.rbegin(); frame != frames_.rend(); ++frame)
            if (frame->kind && frame->kind->kind == kind)
                return &*frame;
        return nullptr;
    }

    void enter(Frame& frame, const char* name, const char** attributes) {
        std::unordered_map<std::string_view, std::string> values;
        for (const char** pair = attributes; pair[0]; pair += 2) {
            const AttributeRule* rule = attributeRule(*frame.kind, pair[0]);
            if (!rule) {
                warn("unknown-attribute", frame.place,
                     std::string(name) + " has no attribute " + quoted(pair[0]));
                continue;
            }
            values.emplace(rule->name, pair[1]);
            checkValue(frame, name, *rule, pair[1]);
        }
        const auto value = [&](std::string_view key) -> const std::string* {
            const auto found = values.find(key);
            return found == values.end() ? nullptr : &found->second;
        };
        const std::string_view kind = frame.kind->kind;
        const std::string* id = value("id");
        if (kind == "Track")
            enterTrack(frame, id, value("contentType"));
        else if (kind == "Channel" && !frame.dropped)
            channels_.insert(id ? *id : "0");
        else if (frame.kind->isParameter && !frame.dropped)
            parameters_.insert(id ? *id : "0");
        if (kind == "Lane" || kind == "LaneClips" || kind == "Points") {
            const Frame* lane = kind == "Lane" ? nullptr : enclosing("Lane");
            const std::string* own = value("track");
            frame.track = lane && !lane->track.empty() ? lane->track : own ? *own : "";
        }
        if (kind == "LaneClip") {
            const Frame* clips = enclosing("LaneClips");
            frame.clip = {clips ? clips->track : "", 0, frame.place};
        }
        if (kind == "Video" && !frames_.empty() && frames_.back().kind &&
            frames_.back().kind->kind == "LaneClip")
            ++frames_.back().clip.videos;
        if (kind == "Target" && value("parameter") && !value("parameter")->empty())
            if (Frame* points = frames_.empty() ? nullptr : &frames_.back())
                points->hasTarget = true;
        if (kind == "Tempo") {
            const std::string* tempo = value("value");
            const std::optional<double> bpm = tempo ? strictReal(*tempo) : 120.0;
            tempoOk_ = bpm && std::isfinite(*bpm) && *bpm > 0;
        }
        if ((kind == "File" || kind == "State") && value("path") && !value("path")->empty())
            result_.media.push_back(
                {*value("path"), value("external") && *value("external") == "true", frame.place});
        frame.hasTimeUnit = value("timeUnit") != nullptr;
        checkRanges(frame, name, value);
    }

    void enterTrack(Frame& frame, const std::string* id, const std::string* content) {
        const auto& known = enumerationTexts(ValueType::kContentType);
        if (frame.dropped)
            return; // said once, for the outermost dropped track
        if (!content || std::find(known.begin(), known.end(), *content) == known.end()) {
            error("track-dropped", frame.place,
                  "a Track without a known contentType is dropped with all below it");
            frame.dropped = true;
            return;
        }
        tracks_.emplace(id ? *id : "0", *content);
    }

    void checkValue(Frame& frame, const char* element, const AttributeRule& rule,
                    const std::string& text) {
        const std::string what =
            std::string(element) + " " + std::string(rule.name) + " " + quoted(text);
        switch (rule.type) {
        case ValueType::kText:
            return;
        case ValueType::kId:
            if (text.empty())
                warn("empty-id", frame.place, std::string(element) + " has an empty id");
            else if (const auto [first, fresh] = ids_.emplace(text, frame.place); !fresh)
                warn("duplicate-id", frame.place,
                     what + " is used before, at " + first->second + "; lookups take the first");
            return;
        case ValueType::kInteger:
            if (!isDecimal(text))
                warn("bad-number", frame.place,
                     what + " is no decimal integer; the reader takes the first digits it "
                            "finds, or 0");
            return;
        case ValueType::kReal:
            if (const std::optional<double> real = strictReal(text); !real)
                warn("bad-number", frame.place,
                     what + " is no plain decimal number; the reader takes the first number it "
                            "finds, or 0");
            else if (!std::isfinite(*real))
                warn("non-finite-number", frame.place, what + " is not a finite number");
            return;
        case ValueType::kBoolean:
            if (text != "true" && text != "false")
                warn("bad-boolean", frame.place,
                     what + " is neither \"true\" nor \"false\"; it reads as false");
            return;
        case ValueType::kColor:
            if (!isColor(text))
                warn("bad-color", frame.place, what + " is no colour; it reads as none");
            return;
        case ValueType::kTrackRef:
        case ValueType::kChannelRef:
        case ValueType::kParameterRef:
            if (rule.type == ValueType::kChannelRef && !text.empty())
                channelRefs_.push_back({text, frame.place});
            if (rule.type == ValueType::kParameterRef && !text.empty())
                parameterRefs_.push_back({text, frame.place});
            return;
        case ValueType::kContentType:
            return; // judged with the track
        case ValueType::kTimeUnit:
            if (text != "seconds")
                useBeats(frame.place);
            break;
        default:
            break;
        }
        const auto& texts = enumerationTexts(rule.type);
        if (std::find(texts.begin(), texts.end(), text) == texts.end())
            warn("unknown-value", frame.place, what + " is not one of the format's texts");
    }

    template <class Value>
    void checkRanges(const Frame& frame, const char* element, const Value& value) {
        const auto real = [&](std::string_view key, double fallback) -> std::optional<double> {
            const std::string* text = value(key);
            const std::optional<double> parsed = text ? strictReal(*text) : fallback;
            return parsed && std::isfinite(*parsed) ? parsed : std::nullopt;
        };
        const auto outOfRange = [&](const std::string& why) {
            warn("out-of-range", frame.place, std::string(element) + " " + why);
        };
        const std::string_view kind = frame.kind->kind;
        if (kind == "LabelledReal" || kind == "RealParameter" || kind == "Tempo") {
            const bool tempo = kind == "Tempo";
            const auto v = real("value", tempo ? 120 : kind == "RealParameter" ? 0 : 0.5);
            const auto low = real("min", tempo ? 10 : 0);
            const auto high = real("max", tempo ? 300 : 1);
            if (v && low && high && (*v < *low || *v > *high))
                outOfRange(
                    (value("value") ? "value " + *value("value") : std::string("default value")) +
                    " lies outside its min and max");
        }
        if (const auto duration = real("duration", 0); duration && *duration < 0)
            outOfRange("has a negative duration");
        for (const std::string_view key :
             {"numerator", "denominator", "sampleRate", "channels", "audioChannels"})
            if (const std::string* text = value(key);
                text && isDecimal(*text) && std::strtoull(text->c_str(), nullptr, 10) == 0)
                outOfRange(std::string(key) + " is 0");
        if (kind == "Note") {
            const std::string* key = value("key");
            const std::string* channel = value("channel");
            if (key && isDecimal(*key) && std::strtoull(key->c_str(), nullptr, 10) > 127)
                outOfRange("key " + *key + " lies above 127");
            if (channel && isDecimal(*channel) && std::strtoull(channel->c_str(), nullptr, 10) > 15)
                outOfRange("channel " + *channel + " lies above 15");
        }
    }

    void useBeats(const std::string& at) {
        if (firstBeats_.empty())
            firstBeats_ = at;
    }

    template <class Known>
    void resolve(const std::vector<Reference>& references, const Known& known, Severity severity,
                 const char* code, const char* what) {
        for (const Reference& reference : references)
            if (known.find(reference.id) == known.end())
                add(severity, code, reference.place,
                    (reference.id.empty() ? std::string("an empty reference")
                                          : quoted(reference.id)) +
                        " " + what);
    }

    XML_Parser parser_;
    std::vector<Frame> frames_;
    DocumentCheck result_;
    std::unordered_map<std::string, std::string> ids_; // id and where it first stands
    std::unordered_map<std::string, std::string> tracks_; // id and content type
    std::unordered_set<std::string> channels_, parameters_;
    std::vector<Reference> trackRefs_, channelRefs_, parameterRefs_;
    std::vector<LaneClip> laneClips_;
    std::string firstBeats_;
    bool tempoOk_ = false;
};

} // namespace

DocumentCheck checkDocument(const std::string& text) {
    XML_Parser parser = XML_ParserCreate("UTF-8");
    if (!parser)
        throw std::bad_alloc();
    Walk walk(parser);
    XML_SetUserData(parser, &walk);
    XML_SetElementHandler(
        parser,
        [](void* data, const XML_Char* name, const XML_Char** attributes) {
            static_cast<Walk*>(data)->start(name, attributes);
        },
        [](void* data, const XML_Char*) { static_cast<Walk*>(data)->end(); });
    XML_SetCharacterDataHandler(parser, [](void* data, const XML_Char* chars, int length) {
        static_cast<Walk*>(data)->text(std::string_view(chars, size_t(length)));
    });
    // One call over the whole text: expat then never rescans a token that spans blocks.
    const bool parsed = XML_Parse(parser, text.data(), int(text.size()), 1) == XML_STATUS_OK;
    const std::string where = std::string(kDocumentName) + ":" +
                              std::to_string(XML_GetCurrentLineNumber(parser)) + ":" +
                              std::to_string(XML_GetCurrentColumnNumber(parser) + 1);
    const char* why = parsed ? "" : XML_ErrorString(XML_GetErrorCode(parser));
    XML_ParserFree(parser);
    DocumentCheck result = walk.finish();
    if (!parsed)
        result.findings.push_back({Severity::kError, "malformed-xml", where, why});
    return result;
}

} // namespace CorvelleTool
