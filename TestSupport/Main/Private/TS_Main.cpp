#include "Util_Assert.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// Every test program starts here: a failed assertion throws, so that a test can expect it, and isn't printed, for many
/// tests provoke thousands of them.
int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    Zem::setAssertionHandler(&Zem::throwAssertionFailure);
    Zem::setAssertionPrinting(false);
    return RUN_ALL_TESTS();
}
