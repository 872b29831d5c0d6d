#include <cstdio>
#include <cstring>

namespace {

const char* const kUsage =
    "Usage: tamrick-cli [--help] [--version] COMMAND [ARGS...]\n"
    "\n"
    "Tamrick's picture engine without a window, for batch work.\n"
    "\n"
    "Options:\n"
    "  -h, --help     show this help and exit\n"
    "  --version      show the version and exit\n";

int Usage(FILE* out, int status) {
    std::fputs(kUsage, out);
    return status;
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) {
        return Usage(stderr, 2);
    }
    const char* first = argv[1];
    if (std::strcmp(first, "--help") == 0 || std::strcmp(first, "-h") == 0) {
        return Usage(stdout, 0);
    }
    if (std::strcmp(first, "--version") == 0) {
        std::puts("tamrick-cli 0.1");
        return 0;
    }
    std::fprintf(stderr, "tamrick-cli: unknown command '%s'\n", first);
    return Usage(stderr, 2);
}
