#include "base/Clock.h"

Clock& Clock::system()
{
    static SystemClock clock;
    return clock;
}
