// CvPluginFactory: the module's factory, holding this library's one class row.
#pragma once

#include "shell/pluginfactory.h"

namespace Halvorn {

class CvPluginFactory final : public CPluginFactory {
public:
    // A new factory with one reference, the module's record and its class row; null when
    // memory runs out.
    [[nodiscard]] static CvPluginFactory* make();

private:
    using CPluginFactory::CPluginFactory;
    ~CvPluginFactory() override = default;
};

} // namespace Halvorn
