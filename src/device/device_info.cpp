// What the device is and how it is used. The old layout keeps it in several sections.
#include "frame/json.h"
#include "k_cnvrt.h"
#include "k_conf.h"

using namespace kcnvrt;

int k_cnvrt_get_deviceinfo_from_new(json_t* source, json_t* old_root, k_err_t*) {
    if (source == nullptr) return 0;
    if (json_t* const mode = get(source, "device_mode")) {
        Json settings = object();
        carry(settings.get(), "device_mode", mode);
        set(old_root, "add_sets", std::move(settings));
    }
    Json info = object();
    carry(info.get(), "ProvisioningCode", get(source, "ProvisioningCode"));
    carry(info.get(), "ModelName", get(source, "ModelName"));
    carry(info.get(), "autologin", get(source, "autologin"));

    // The services may have written "tr069" before; then this is one more member of it.
    json_t* const tr069 = get(old_root, "tr069");
    Json created = tr069 == nullptr ? object() : nullptr;
    set(tr069 == nullptr ? created.get() : tr069, "DeviceInfo", std::move(info));
    carry(old_root, "lang", get(source, "lang"));
    set(old_root, "tr069", std::move(created));
    return 0;
}

int k_cnvrt_get_deviceinfo_from_old(json_t* old_root, json_t* device, k_err_t*) {
    Json info = object();
    if (json_t* const tr069_info = get(get(old_root, "tr069"), "DeviceInfo")) {
        carry(info.get(), "ProvisioningCode", get(tr069_info, "ProvisioningCode"));
        // Written into the TR-069 block, but read from the users' web service: the two directions differ on purpose.
        carry(info.get(), "autologin", k_conf_find_branch(old_root, "users.services.web.autologin", 0));
    }
    carry(info.get(), "device_mode", get(get(old_root, "add_sets"), "device_mode"));
    carry(info.get(), "lang", get(old_root, "lang"));
    if (!is_empty(info.get())) set(device, "DeviceInfo", std::move(info));
    return 0;
}
