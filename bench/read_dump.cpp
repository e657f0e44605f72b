// bench-read-dump DUMP SCHEMA: reads and validates a dump as the deployment of a dump does, and
// does nothing else.
#include <cstdio>
#include <iostream>

#include "commons/text_formatter.h"
#include "restore/zelvo_dump.h"
#include "xml/validation.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: bench-read-dump DUMP SCHEMA\n", stderr);
        return 2;
    }
    try {
        zelvo::tXmlZelvoDump dump(argv[1]);
        dump.initFileDoc("migration-dump");
        zelvo::validateSchema(dump, argv[2]);
        return 0;
    } catch (const zelvo::ExTraceable& failure) {
        std::cerr << zelvo::formatPlainTextMessage(failure) << std::endl;
        return 1;
    }
}
