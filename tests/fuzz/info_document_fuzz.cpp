// Info documents with any bytes in them, as the repository reads, signs and checks them: what is
// refused is refused in the reader's own words, and no temporary file stays. An input that begins
// with "s" is signed and checked as well, which starts the signing tool, here one that finds
// nothing wrong.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "memory_configuration.h"
#include "repository/info_xml_reader.h"
#include "temp_dir.h"

namespace zelvo {
namespace {

const char kSignTool[] =
    "#!/bin/sh\nif [ $1 = sign ]; then echo '<Envelope>'; cat \"$2\"; echo '</Envelope>'\n"
    "else grep -v '^</*Envelope>$' \"$2\"; fi\n";

class Machine {
  public:
    Machine() {
        for (const char* dir : {"admin/sbin", "RMK", "tmp", "r"}) {
            std::filesystem::create_directories(dir_.path(dir));
        }
        configuration_.set("PRODUCT_ROOT_D", dir_.path(""));
        configuration_.set("DUMP_TMP_D", dir_.path("tmp"));
        std::filesystem::permissions(dir_.write("admin/sbin/backup_sign", kSignTool),
                                     std::filesystem::perms::owner_all);
        for (const char* schema : {"/zelvo.xsd", "/restore-specification.xsd"}) {
            std::filesystem::copy_file(std::string(SHARE_DIR) + schema, dir_.path("RMK") + schema);
        }
    }

    void ask(const std::string& document, bool isSigned) {
        dir_.write("r/info.xml", document);
        tInfoXmlReader reader(transport_.get(), "info.xml");
        refusable([&] {
            reader.ReadObject();
            if (!IsValidTypeName(reader.object_type()) || reader.object_type() == "admin") abort();
        });
        refusable([&] { reader.ReadDescription(); });
        refusable([&] { reader.ReadContent(); });
        if (isSigned) {
            refusable([&] {
                reader.Sign();
                // A tool that fails is a fault of the tool, and this one does not.
                if (!IsSigned(reader.GetLocalPath())) abort();
            });
            refusable([&] { reader.ValidateZelvoXsd(); });
        }
        reader.ClearTempFiles();
        if (!std::filesystem::is_empty(dir_.path("tmp"))) abort();
    }

  private:
    template <class Call>
    static void refusable(Call&& call) {
        try {
            call();
        } catch (const Exc<&tInfoXmlReader::XmlReaderError>&) {
            // Any other failure ends the target.
        }
    }

    const TempDir dir_ = TempDir::inMemory();
    const MemoryConfiguration configuration_;
    std::unique_ptr<tRepositoryTransport> transport_ = tRepositoryTransport::Get(dir_.path("r"));
};

}  // namespace
}  // namespace zelvo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static zelvo::Machine machine;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const bool isSigned = text.starts_with('s');
    machine.ask(text.substr(isSigned ? 1 : 0), isSigned);
    return 0;
}
