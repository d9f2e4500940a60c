#pragma once

// How the compiler describes classes to a run-time library, and how that library keeps them. Both sides agree
// on these layouts as far as they are written down here; what the newer compiler adds behind them the older
// library never reads.
namespace runtime {

struct Protocol;

struct ProtocolList {
    ProtocolList* next;
    unsigned long count;
    Protocol* protocols[1];
};

struct Protocol {
    unsigned long version; ///< the library puts the class of protocols in its place
    const char* name;
    ProtocolList* adopted;
};

struct InstanceVariable {
    const char* name;
    const char* type;
    int offset;
};

struct InstanceVariables {
    int count;
    InstanceVariable variables[1];
};

struct Class {
    Class* metaclass;
    const char* superclass; ///< its name; the library puts the class in its place
    const char* name;
    long version;
    unsigned long info;
    long size;
    InstanceVariables* variables;
    void* methods;
    void* dispatchTable;
    Class* firstSubclass;
    Class* sibling;
    ProtocolList* protocols;
    void* collector;
    long interface; ///< from here on the compiler's alone
    int** offsets;  ///< where the code finds the offset of each instance variable
};

struct Category {
    const char* name;
    const char* className;
    void* instanceMethods;
    void* classMethods;
    ProtocolList* protocols;
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

} // namespace runtime
