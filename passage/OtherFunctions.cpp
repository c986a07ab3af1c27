// Functions found by their decorated names.
#include "passage/OtherFunctions.h"

#include <type_traits>

#include "passage/ItaniumNames.h"
#include "passage/MicrosoftNames.h"

namespace Link {

namespace {

using Decorated = std::conditional_t<IS_MICROSOFT_ABI, MicrosoftNames, ItaniumNames>;

class Finder {
  public:
    explicit Finder(HMODULE library) : m_Library(library) {}

    template <class Function>
    void Find(const char* pszName, Function& function) {
        const auto address = reinterpret_cast<std::uintptr_t>(GetProcAddress(m_Library, pszName));
        if constexpr (std::is_member_function_pointer_v<Function>) {
            function = MethodAt<Function>(address);
        } else {
            function = reinterpret_cast<Function>(address);
        }
        if (function == nullptr) {
            missing.emplace_back(pszName);
        }
    }

    std::vector<std::string> missing;

  private:
    HMODULE m_Library;
};

void FindOfEventProcedure(Finder& finder, OTHER_FUNCTIONS& functions) {
    finder.Find(Decorated::EVENT_PROCEDURE, functions.eventProcedure.construct);
    finder.Find(Decorated::EVENT_PROCEDURE_END, functions.eventProcedure.destroy);
    finder.Find(Decorated::EXECUTE_WITH_PARAMETER, functions.executeWithParameter);
    finder.Find(Decorated::CLEAR_PARAMETERS, functions.clearParameters);
    finder.Find(Decorated::PUSH_INTEGER, functions.pushInteger);
    finder.Find(Decorated::PUSH_SAFE_ARRAY, functions.pushSafeArray);
    finder.Find(Decorated::EXECUTE, functions.execute);
    finder.Find(Decorated::EXECUTE_AND_GET_SIZE, functions.executeAndGetSize);
    finder.Find(Decorated::GET_RETURN_DATA, functions.getReturnData);
    finder.Find(Decorated::EXECUTE_AND_GET_DATA, functions.executeAndGetData);
}

void FindOfProperty(Finder& finder, OTHER_FUNCTIONS& functions) {
    finder.Find(Decorated::PUBLIC_PROPERTY, functions.publicProperty.construct);
    finder.Find(Decorated::PUBLIC_PROPERTY_END, functions.publicProperty.destroy);
    finder.Find(Decorated::GET, functions.get);
    finder.Find(Decorated::SET, functions.set);
    finder.Find(Decorated::SAVE, functions.save);
    finder.Find(Decorated::INITIALIZE_LIST, functions.initializeList);
    finder.Find(Decorated::PUSH_LIST, functions.pushList);
    finder.Find(Decorated::SAVE_LIST, functions.saveList);
}

void FindOfMonitor(Finder& finder, OTHER_FUNCTIONS& functions) {
    finder.Find(Decorated::MONITOR, functions.monitor.construct);
    finder.Find(Decorated::MONITOR_END, functions.monitor.destroy);
    finder.Find(Decorated::OPEN_SESSION, functions.openSession);
    finder.Find(Decorated::CHANGE_BANK, functions.changeBank);
    finder.Find(Decorated::WRITE_MEMORY, functions.writeMemory);
    finder.Find(Decorated::READ_MEMORY, functions.readMemory);
    finder.Find(Decorated::CALL_FUNCTION, functions.callFunction);
    finder.Find(Decorated::CLOSE_SESSION, functions.closeSession);
}

}  // namespace

std::vector<std::string> FindFunctions(HMODULE library, OTHER_FUNCTIONS& functions) {
    Finder finder(library);
    FindOfEventProcedure(finder, functions);
    FindOfProperty(finder, functions);
    FindOfMonitor(finder, functions);
    finder.Find(Decorated::FILE_PATH, functions.filePath.construct);
    finder.Find(Decorated::FILE_PATH_END, functions.filePath.destroy);
    finder.Find(Decorated::GET_PROPERTY_FULL_PATH, functions.getPropertyFullPath);
    finder.Find(Decorated::LINE_PREFIX, functions.linePrefix);
    return finder.missing;
}

}  // namespace Link
