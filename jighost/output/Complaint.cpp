// One form for all that goes wrong.
#include "jighost/output/Complaint.h"

#include <iostream>

#include "jighost/text/PlainText.h"

void Complain(std::string_view text) {
    std::cerr << "jighost: " << PlainText(text) << '\n';
}

void Complain(const HostError& error) {
    std::cerr << "jighost: " << error.what() << '\n';
}

bool DoOrComplain(const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const HostError& e) {
        Complain(e);
        return false;
    }
}
