// SPDX-License-Identifier: Apache-2.0
// corvane-generate: writes a station of a wanted size to a file.
#include "station/StationGenerator.h"
#include "station/StationPlan.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

#include <optional>

using namespace Corvane::Bench;

namespace
{

constexpr double g_dMaxMegabytes = 2800.0;

int Fail(const QString& message)
{
    QTextStream(stderr) << "corvane-generate: " << message << '\n';
    return 2;
}

std::optional<StationRequest> Request(const QCommandLineParser& arguments)
{
    bool sizeOk = false;
    bool iedsOk = false;
    bool seedOk = false;
    const double megabytes = arguments.value("megabytes").toDouble(&sizeOk);
    const int ieds = arguments.value("ieds").toInt(&iedsOk);
    const quint64 seed = arguments.value("seed").toULongLong(&seedOk);
    if (!seedOk || arguments.isSet("megabytes") == arguments.isSet("ieds")) {
        return std::nullopt;
    }
    if (sizeOk && megabytes > 0.0 && megabytes <= g_dMaxMegabytes) {
        return StationRequest::OfSize(static_cast<qint64>(megabytes * 1e6), seed);
    }
    if (iedsOk && ieds >= StationPlan::g_nMinIeds && ieds <= StationPlan::g_nMaxIeds) {
        return StationRequest::OfIeds(ieds, seed);
    }
    return std::nullopt;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser arguments;
    arguments.setApplicationDescription("Writes an SCL station file of a wanted size.");
    arguments.addHelpOption();
    arguments.addOption({"megabytes", "Size of the file, in units of 1,000,000 bytes.", "N"});
    arguments.addOption({"ieds", "Number of IEDs, 4 to 8000, about 0.35 MB each.", "N"});
    arguments.addOption({"seed", "Another seed gives another station.", "S", "1"});
    arguments.addOption({{"o", "output"}, "The file to write.", "FILE"});
    arguments.process(application);

    const std::optional<StationRequest> request = Request(arguments);
    if (!request || !arguments.isSet("output")) {
        return Fail("give --megabytes N or --ieds N, and -o FILE; see --help");
    }
    QFile file(arguments.value("output"));
    if (!file.open(QIODevice::WriteOnly)) {
        return Fail("cannot write " + file.fileName());
    }
    if (!GenerateStation(*request, file) || !file.flush()) {
        return Fail("writing " + file.fileName() + " failed");
    }
    return 0;
}
