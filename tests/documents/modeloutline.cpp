// An outline of a project model as text, rendered from the support library's model walk.
#include "modeloutline.h"

#include "common/model_compare.h"
#include "corvelle/ptr.h"
#include "model/cvfile.h"

#include <set>

namespace Halvorn {
namespace DocumentTest {
namespace {

using CorvelleSupport::ModelNode;

struct Writer {
    std::string out;
    std::set<FUnknown*> trackChannels;

    void line(int depth, const std::string& content) {
        out += std::string(static_cast<size_t>(depth) * 2, ' ') + content + "\n";
    }

    void node(int depth, const ModelNode& node) {
        std::string text = node.kind;
        for (const CorvelleSupport::Field& field : node.fields) {
            const std::string value = ModelCompare::valueText(field.value, 15);
            text +=
                " " + field.name + "=" +
                (std::holds_alternative<std::string>(field.value) ? "\"" + value + "\"" : value);
        }
        // Whether a file lies outside the package is known to the model's own face only.
        IPtr<ICvFileAccessor> accessor = queryInterface<ICvFileAccessor>(node.object);
        line(depth, text + (accessor && accessor->getFile()->isExternal() ? " external" : ""));
        for (const CorvelleSupport::ModelGroup& group : node.groups)
            for (const ModelNode& item : group.items) {
                if (group.name == "channel")
                    trackChannels.insert(item.object);
                if (group.name == "channels" && trackChannels.count(item.object))
                    line(depth + 1, "channel of a track id=\"" +
                                        ModelCompare::valueText(*item.field("id")) + "\"");
                else
                    this->node(depth + 1, item);
            }
    }
};

} // namespace

std::string outline(IMediaProject* project) {
    Writer writer;
    writer.node(0, CorvelleSupport::walkModel(*project));
    return writer.out;
}

} // namespace DocumentTest
} // namespace Halvorn
