#include <iostream>

#include "commons/process_start.h"
#include "commons/text_formatter.h"
#include "deployer/front_end.h"

int main(int argc, char** argv) {
    zelvo::startProcess();
    try {
        return zelvo::real_main(argc, argv);
    } catch (const zelvo::ExTraceable& failure) {
        std::cerr << "Uncaught ExTraceableException: " << zelvo::formatPlainTextMessage(failure)
                  << std::endl;
    } catch (const std::exception& failure) {
        std::cerr << "Uncaught std::exception: " << failure.what() << std::endl;
    } catch (...) {
        std::cerr << "Uncaught unknown exception\n";
    }
    return 1;
}
