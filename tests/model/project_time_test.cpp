// Replacing the tempo and signature, and the beat converter.
#include "model/cvproject.h"
#include "modeltest.h"

#include <gtest/gtest.h>

namespace Halvorn {
namespace {

TEST(ProjectTime, ReplacingTempoAndSignatureKeepsThemNonNullAndBalanced) {
    auto project = newObject<CvProject>("", "");
    EXPECT_EQ(project->getTrack(0), nullptr);
    EXPECT_EQ(project->getChannel(0), nullptr);
    CvParameter* original = project->getTempo();
    project->setTempo(nullptr);
    project->setTimeSignature(nullptr);
    EXPECT_EQ(project->getTempo(), original);
    EXPECT_NE(project->getTimeSignature(), nullptr);

    auto tempo = newObject<CvParameter>(kUnitBpm, "tempo");
    tempo->setValue(98.5);
    project->setTempo(tempo.get());
    project->setTempo(tempo.get()); // the same object again changes nothing
    EXPECT_EQ(tempo->refCount(), 2);
    EXPECT_EQ(static_cast<IMediaProject*>(project.get())->getTempo()->getValue(), 98.5);

    auto signature = newObject<CvSignature>(7, 8, "sig");
    project->setTimeSignature(signature.get());
    IMediaSignature* face = static_cast<IMediaProject*>(project.get())->getTimeSignature();
    EXPECT_EQ(face->getNumerator(), 7);
    EXPECT_EQ(face->getDenominator(), 8);
    EXPECT_EQ(signature->refCount(), 2);
    project = nullptr;
    EXPECT_EQ(tempo->refCount(), 1);
    EXPECT_EQ(signature->refCount(), 1);
}

TEST(ProjectTime, TimeDomainConvertsBeatsAndSecondsAtItsTempo) {
    auto domain = newObject<CvTimeDomain>(120.0);
    EXPECT_DOUBLE_EQ(domain->beatsToSeconds(4.0), 2.0);
    EXPECT_DOUBLE_EQ(domain->secondsToBeats(2.0), 4.0);
    domain->setTempo(90.0);
    EXPECT_DOUBLE_EQ(domain->beatsToSeconds(3.0), 2.0);
    EXPECT_DOUBLE_EQ(domain->secondsToBeats(domain->beatsToSeconds(7.25)), 7.25);
    EXPECT_TRUE(domain->isTypeOf("CvNode"));
}

} // namespace
} // namespace Halvorn
