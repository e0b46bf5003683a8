// A queue's node holds 8 bytes; a larger payload would be cut in two that don't belong together.
#include "core/LockFreeQueue.h"

struct Fits {
    int index;
    float value;
};
struct TooLarge {
    int index;
    double value;
};

cinder::LockFreeQueue<Fits> fits(16);
#ifdef FAULT
cinder::LockFreeQueue<TooLarge> tooLarge(16);
#endif
