// All of the host's interfaces that the system reads on export, drives on import and uses for
// its dialogs and settings.
#pragma once

#include "hostapi/hostautomation.h"
#include "hostapi/hostcontext.h"
#include "hostapi/hostdialogs.h"
#include "hostapi/hostmedia.h"
#include "hostapi/hostmixer.h"
#include "hostapi/hostplugin.h"
#include "hostapi/hostproject.h"
#include "hostapi/hosttimeline.h"
