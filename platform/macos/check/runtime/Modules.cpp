// Brings modules of a compiler that works for a newer run-time library into the form that GCC's library
// takes: instance variables get their offsets here, because the compiler leaves open how large a superclass
// is.
#include <cstring>
#include <dlfcn.h>
#include <vector>

namespace {

// How the compiler describes classes and how that library keeps them, as far as both agree and it matters
// here. What the newer compiler adds behind that the older library never reads.

struct InstanceVariables {
    int count;
    struct {
        const char* name;
        const char* type;
        int offset;
    } variables[1];
};

struct Class {
    Class* metaclass;
    const char* superclass; ///< its name; the library puts the class in its place
    const char* name;
    long version;
    unsigned long info;
    long size;
    InstanceVariables* variables;
    void* unused[4];
    void* protocols;
    void* unneeded[2];
    int** offsets; ///< where the code finds the offset of each instance variable
};

struct Symbols {
    unsigned long selectorCount;
    void* selectors;
    unsigned short classCount;
    unsigned short categoryCount;
    void* definitions[1]; ///< classes, then categories
};

struct Module {
    unsigned long version;
    unsigned long size;
    const char* name;
    Symbols* symbols;
};

constexpr unsigned long librarysVersion = 8;
constexpr unsigned long librarysInfo = 0xf;

} // namespace

extern "C" Class* objc_lookUpClass(const char* name);
extern "C" void __objc_exec_class(Module* module);

namespace {

Class& classAt(const Symbols& symbols, unsigned index) {
    return *static_cast<Class*>(symbols.definitions[index]);
}

/// Of the same module, in which it stands before, or of what the library knows by now.
const Class* superclassOf(const Symbols& symbols, const Class& each) {
    for (unsigned i = 0; i < symbols.classCount; ++i)
        if (std::strcmp(classAt(symbols, i).name, each.superclass) == 0)
            return &classAt(symbols, i);
    return objc_lookUpClass(each.superclass);
}

/// The compiler counts the new instance variables from the end of the superclass, and their size below zero.
void place(const Symbols& symbols, Class& each) {
    each.info &= librarysInfo;
    each.metaclass->info &= librarysInfo;
    each.protocols = nullptr; // whose form differs, too, and which nobody asks for
    const long start = (superclassOf(symbols, each)->size + 7) & ~7L;
    for (int i = 0; each.variables && i < each.variables->count; ++i) {
        int& offset = each.variables->variables[i].offset;
        offset += static_cast<int>(start);
        *each.offsets[i] = offset;
    }
    each.size = start - each.size;
}

void fit(Module& module) {
    const Symbols& symbols = *module.symbols;
    for (unsigned i = 0; i < symbols.classCount; ++i)
        place(symbols, classAt(symbols, i));
    module.version = librarysVersion;
    module.size = sizeof(Module);
}

void handOver(Module* module) {
    static const auto library = reinterpret_cast<void (*)(Module*)>(dlsym(RTLD_NEXT, "__objc_exec_class"));
    library(module);
}

/// Only when all superclasses are there.
bool handedOver(Module* module) {
    for (unsigned i = 0; i < module->symbols->classCount; ++i)
        if (!superclassOf(*module->symbols, classAt(*module->symbols, i)))
            return false;
    fit(*module);
    handOver(module);
    return true;
}

} // namespace

/// Called by each module when it is loaded. The program's own comes before the library's, also for the
/// libraries.
void __objc_exec_class(Module* module) {
    static auto* waiting = new std::vector<Module*>; // outlives everything that runs at the start
    if (module->version <= librarysVersion)
        return handOver(module);
    waiting->push_back(module);
    while (std::erase_if(*waiting, handedOver) > 0) {
    }
}
