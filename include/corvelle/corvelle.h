// The umbrella header: everything a caller outside the library compiles against.
//
// A program without a host includes this one header, gets a package manager from
// CreatePackageManager, and walks the project models it reads through the IMedia interfaces.
#pragma once

#include "corvelle/base.h"
#include "corvelle/factory.h"
#include "corvelle/mediaautomation.h"
#include "corvelle/mediaclip.h"
#include "corvelle/mediadevice.h"
#include "corvelle/mediaobject.h"
#include "corvelle/mediaparameter.h"
#include "corvelle/mediaproject.h"
#include "corvelle/mediatrack.h"
#include "corvelle/package.h"
#include "corvelle/ptr.h"
#include "corvelle/stream.h"
#include "corvelle/utf8.h"
#include "corvelle/version.h"
