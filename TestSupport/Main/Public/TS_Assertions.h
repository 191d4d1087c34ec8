#pragma once

/// Expectations about failed assertions. They need the throwing handler, which the tests' main function installs.

#include "Util_Assert.h"

#include <gtest/gtest.h>

#include <string>

/// Expects that `statement` fails the assertion whose message is `message`, to the letter.
#define EXPECT_ASSERTION(statement, message)                                                                           \
    do                                                                                                                 \
    {                                                                                                                  \
        try                                                                                                            \
        {                                                                                                              \
            statement;                                                                                                 \
            ADD_FAILURE() << #statement << " was to fail the assertion \"" << (message) << '"';                        \
        }                                                                                                              \
        catch (const ::Zem::AssertionFailure& assertionFailure)                                                        \
        {                                                                                                              \
            EXPECT_EQ(std::string(message), assertionFailure.what());                                                  \
        }                                                                                                              \
    } while (false)
