// A port list while memory runs out.
#include <string>

#include "frame_memory.h"
#include "frame_tree.h"
#include "ifaces/port_list.h"

namespace kcnvrt {
namespace {

TEST(PortList, IsWrittenWholeOrNotAtAll) {
    const Json ports = tree("{'1': {'name': 'Port1'}, '2': {'name': 'Port2'}, '3': {'name': 'WiFi1'}}");
    size_t left_out = 0;
    for (size_t allocations = 0; allocations < 8; ++allocations) {
        const Json destination = object();
        {
            const OneFailure failure{allocations};
            EXPECT_EQ(ways::ports_to_old(destination.get(), "port", ports.get(), Report{"port_list", nullptr}), 0);
        }
        const std::string written = text(destination);
        left_out += written == "{}";
        EXPECT_TRUE(written == "{}" || written == "{'port':'Ports:1,2;WiFi:1'}") << allocations << " " << written;
    }
    EXPECT_GT(left_out, 0u);
    EXPECT_LT(left_out, 8u);
}

}  // namespace
}  // namespace kcnvrt
