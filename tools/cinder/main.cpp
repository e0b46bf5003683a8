#include "cinder/CommandLine.h"
#include "cinder/StandardStreams.h"

int main(int argc, char** argv) {
    cinder::secureStandardStreams();
    return cinder::runCommandLine(argc, argv);
}
