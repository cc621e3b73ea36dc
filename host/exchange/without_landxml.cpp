// Stands in for the reader where qsvtin is built without pugixml (QSV_LANDXML=OFF).
#include "host/exchange/landxml.h"
#include "host/failure.h"

namespace qsvtin {

ExchangeFile ReadLandXml(const std::string& path)
{
    throw Failure("cannot read " + path +
                      ": this qsvtin was built without LandXML; export it as .dxf, "
                      "or build it with -DQSV_LANDXML=ON",
                  Failure::BadUsage);
}

}   // namespace qsvtin
