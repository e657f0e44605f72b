#include "restore/objects/skeleton.h"

#include <boost/filesystem/operations.hpp>
#include <utility>

#include "content/content_errors.h"
#include "content/content_failure.h"
#include "restore/toolbox/panel_command.h"
#include "restore/toolbox/panel_file.h"

namespace zelvo {

namespace {

void requireContent(const PanelFile& archive) {
    boost::system::error_code error;
    const auto size = boost::filesystem::file_size(archive.path(), error);
    if (error || size == 0) {
        throw EXC(UnExpectedResult) % "the archive is missing or empty";
    }
}

}  // namespace

SkeletonDeployer::SkeletonDeployer(std::string owner) : owner_(std::move(owner)) {}

void SkeletonDeployer::act(XmlNode node) const {
    auto failed = EXC(CantUnpackSkeleton) % owner_;
    contentGuarded(failed, [&] { install(node); });
}

void SkeletonDeployer::install(const XmlNode& node) const {
    const Cid cid(node);
    const PanelFile archive("rmk-skel-");
    archive.handOver();
    extractor->extractPart(cid, archive.path());
    requireContent(archive);
    CliExec cmd = commandOn("skeleton", "--install", owner_);
    cmd << "-filename" << archive.path() << "-force-type"
        << "tar";
    cmd.exec();
}

}  // namespace zelvo
