#include "Program.h"

int main(int argumentsCount, char** arguments)
{
    return ZemFarm::runProgram(argumentsCount, arguments);
}
