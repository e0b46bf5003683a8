// The ground floor can't see the floors above it.
#include "core/Property.h"
#ifdef FAULT
#include "wave/Producer.h"
#endif
