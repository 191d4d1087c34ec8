#include <Util_Assert.h>

#include <iostream>
#include <string>

int main()
{
    Zem::setAssertionHandler(&Zem::throwAssertionFailure);
    Zem::setAssertionPrinting(false);
    try
    {
        ZEM_FAIL("reached");
    }
    catch (const Zem::AssertionFailure& failure)
    {
        std::cout << failure.what() << '\n';
        return failure.what() == std::string("reached") ? 0 : 1;
    }
}
