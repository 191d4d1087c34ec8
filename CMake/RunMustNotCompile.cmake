# cmake -D COMPILER=... -D INCLUDE_DIRS=... -D SOURCE=... -P RunMustNotCompile.cmake
#
# SOURCE must compile as it is, so that nothing but the line under test can be at fault, and must not compile with
# MUST_NOT_COMPILE defined. Its first line names the error, as a regular expression that both compilers' words match:
# "// error: ...".

file(STRINGS "${SOURCE}" lines LIMIT_COUNT 1)
if(NOT lines MATCHES "^// error: (.+)$")
    message(FATAL_ERROR "${SOURCE}: the first line must be \"// error: <regular expression>\"")
endif()
set(expected "${CMAKE_MATCH_1}")

# Quotation marks differ between languages.
set(ENV{LC_ALL} C)
set(command "${COMPILER}" -std=c++20 -fsyntax-only)
foreach(directory IN LISTS INCLUDE_DIRS)
    list(APPEND command -I "${directory}")
endforeach()

execute_process(COMMAND ${command} "${SOURCE}" RESULT_VARIABLE result ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${SOURCE} doesn't compile even without MUST_NOT_COMPILE:\n${errors}")
endif()

execute_process(COMMAND ${command} -DMUST_NOT_COMPILE "${SOURCE}" RESULT_VARIABLE result ERROR_VARIABLE errors)
if(result EQUAL 0)
    message(FATAL_ERROR "${SOURCE} compiles with MUST_NOT_COMPILE.")
endif()
if(NOT errors MATCHES "${expected}")
    message(FATAL_ERROR "${SOURCE} fails for another reason than \"${expected}\":\n${errors}")
endif()
