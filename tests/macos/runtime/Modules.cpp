// Brings modules of a compiler that works for a newer run-time library into the form that GCC's library
// takes: instance variables get their offsets here, because the compiler leaves open how large a superclass
// is.
#include "tests/macos/runtime/Modules.h"

#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <vector>

extern "C" {
runtime::Class* objc_lookUpClass(const char* name);
void __objc_exec_class(runtime::Module* module);
}

namespace runtime {

namespace {

constexpr unsigned long librarysVersion = 8;
constexpr unsigned long librarysProtocols = 2;
constexpr unsigned long librarysInfo = 0xf;

Class* definedClass(const Symbols& symbols, unsigned index) {
    return static_cast<Class*>(symbols.definitions[index]);
}

Class* classNamed(const Symbols& symbols, const char* name) {
    for (unsigned i = 0; i < symbols.classCount; ++i)
        if (std::strcmp(definedClass(symbols, i)->name, name) == 0)
            return definedClass(symbols, i);
    return nullptr;
}

bool superclassesAreThere(const Symbols& symbols) {
    for (unsigned i = 0; i < symbols.classCount; ++i) {
        const char* superclass = definedClass(symbols, i)->superclass;
        if (superclass && !classNamed(symbols, superclass) && !objc_lookUpClass(superclass))
            return false;
    }
    return true;
}

void fitProtocols(ProtocolList* list) {
    for (; list; list = list->next)
        for (unsigned long i = 0; i < list->count; ++i)
            if (Protocol& protocol = *list->protocols[i];
                protocol.version > librarysProtocols && protocol.version < 16) {
                protocol.version = librarysProtocols;
                fitProtocols(protocol.adopted);
            }
}

/// The compiler counts the new instance variables from the end of the superclass, and their size below zero.
void place(const Symbols& symbols, Class& each) {
    if (!(each.info & ~librarysInfo))
        return; // placed already, as another one's superclass
    each.info &= librarysInfo;
    each.metaclass->info &= librarysInfo;
    fitProtocols(each.protocols);
    Class* superclass = classNamed(symbols, each.superclass);
    if (superclass)
        place(symbols, *superclass);
    else
        superclass = objc_lookUpClass(each.superclass);
    const long start = (superclass->size + 7) & ~7L;
    const int count = each.variables ? each.variables->count : 0;
    for (int i = 0; i < count; ++i) {
        int& offset = each.variables->variables[i].offset;
        offset += static_cast<int>(start);
        *each.offsets[i] = offset;
    }
    each.size = start - each.size;
}

void fit(Module& module) {
    const Symbols& symbols = *module.symbols;
    for (unsigned i = 0; i < symbols.classCount; ++i)
        place(symbols, *definedClass(symbols, i));
    for (unsigned i = 0; i < symbols.categoryCount; ++i)
        fitProtocols(static_cast<Category*>(symbols.definitions[symbols.classCount + i])->protocols);
    module.version = librarysVersion;
    module.size = sizeof(Module);
}

void handOver(Module* module) {
    static const auto library = reinterpret_cast<void (*)(Module*)>(dlsym(RTLD_NEXT, "__objc_exec_class"));
    if (!library)
        std::abort();
    library(module);
}

/// Modules of which a superclass is not there yet. They outlive everything that runs at the start.
std::vector<Module*>& waiting() {
    static auto* modules = new std::vector<Module*>;
    return *modules;
}

bool takeOneThatCan() {
    auto& modules = waiting();
    for (auto each = modules.begin(); each != modules.end(); ++each)
        if (superclassesAreThere(*(*each)->symbols)) {
            Module* module = *each;
            modules.erase(each);
            fit(*module);
            handOver(module);
            return true;
        }
    return false;
}

} // namespace

} // namespace runtime

/// Called by each module when it is loaded. The program's own comes before the library's, also for the
/// libraries.
void __objc_exec_class(runtime::Module* module) {
    if (module->version <= runtime::librarysVersion)
        return runtime::handOver(module);
    runtime::waiting().push_back(module);
    while (runtime::takeOneThatCan()) {
    }
}
