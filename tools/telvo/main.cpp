#include "Tool.h"

int main(int argc, char** argv)
{
    return telvo::runTool(argc, argv);
}
