// Small FObject classes for the tests: they report their destruction.
#pragma once

#include "foundation/fobject.h"

class Counted : public Halvorn::FObject {
public:
    CV_DECLARE_TYPE(Counted, FObject)
    explicit Counted(int* destroyed = nullptr) : destroyed_(destroyed) {}

protected:
    ~Counted() override {
        if (destroyed_)
            ++*destroyed_;
    }

private:
    int* destroyed_;
};

class CountedLeaf : public Counted {
public:
    CV_DECLARE_TYPE(CountedLeaf, Counted)
    using Counted::Counted;
};
