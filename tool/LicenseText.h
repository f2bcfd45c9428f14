// The fixed texts of the end-user licence agreement. They hold no quote, "<" or "&", which
// no output format escapes. Their line feeds stand raw in JSON, like those of any value.
#pragma once

namespace cli::version {

inline constexpr const char* LICENSE_HEADING = "NORVO END-USER LICENSE AGREEMENT\n";

inline constexpr const char* LICENSE_AGREEMENT =
    "This agreement is between you and Norvo, the maker of this software. By installing or\n"
    "using the software you accept it. If you do not accept it, do not install or use the\n"
    "software, and remove every copy that you hold.\n"
    "\n"
    "1. License. Norvo grants you a non-exclusive right, free of charge, to install and use\n"
    "   the software on any number of machines, to manage Norvo solid-state drives.\n"
    "2. Copies. You may copy the software for installation and backup, and pass on complete\n"
    "   and unchanged copies together with this agreement. You may not sell it.\n"
    "3. Ownership. The software is licensed, not sold. Norvo keeps all rights that this\n"
    "   agreement does not grant.\n"
    "4. Your data. Some commands change, erase or format drives. Keep a backup of the data\n"
    "   on a drive before you run such a command on it.\n"
    "5. No warranty. The software is provided as it is, without warranty of any kind,\n"
    "   expressed or implied, as far as the law allows.\n"
    "6. Liability. As far as the law allows, Norvo is not liable for loss of data, for loss\n"
    "   of use, or for any other damage that arises from using the software.\n"
    "7. End. Your rights end if you break this agreement. You must then stop using the\n"
    "   software and remove every copy that you hold.\n";

}  // namespace cli::version
