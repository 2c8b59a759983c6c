// CvParameter and CvParameterContainer: normalizing and finding parameters.
#include "model/cvparameter.h"

#include "model/cvlist.h"

namespace Halvorn {

tresult CvParameter::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaParameter)
    return CvNode::queryInterface(iid, object);
}

double CvParameter::getNormalizedValue() {
    if (max_ == min_)
        return 0.0;
    return (value_ - min_) / (max_ - min_);
}

CvParameterContainer::~CvParameterContainer() = default;

tresult CvParameterContainer::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaParameterContainer)
    return CvNode::queryInterface(iid, object);
}

uint32 CvParameterContainer::getParameterCount() { return listCount(parameters_); }

IMediaParameter* CvParameterContainer::getParameter(uint32 index) {
    return listElement<IMediaParameter>(parameters_, index);
}

IMediaParameter* CvParameterContainer::findParameterById(const char16* id) {
    return id ? parameters_.findById(String(id)) : nullptr;
}

IMediaParameter* CvParameterContainer::findParameterByNumber(uint32 parameterId) {
    for (const IPtr<CvParameter>& parameter : parameters_.elements())
        if (parameter->getParameterId() == parameterId)
            return parameter.get();
    return nullptr;
}

IMediaParameter* CvParameterContainer::findParameterByName(const char8* name) {
    if (!name)
        return nullptr;
    String wanted(name);
    for (const IPtr<CvParameter>& parameter : parameters_.elements())
        if (parameter->getNodeName() == wanted)
            return parameter.get();
    return nullptr;
}

bool CvParameterContainer::hasParameterNumber(uint32 parameterId) {
    return findParameterByNumber(parameterId) != nullptr;
}

bool CvParameterContainer::hasParameterName(const char8* name) {
    return findParameterByName(name) != nullptr;
}

void CvParameterContainer::addParameter(CvParameter* parameter) {
    parameters_.add(parameter);
}

} // namespace Halvorn
