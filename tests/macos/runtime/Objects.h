#pragma once

#import <Foundation/Foundation.h>

/// What is known of an object beyond its instance variables. It goes when the object goes.
[[nodiscard]] NSMutableDictionary* recordOf(id object);
/// How many objects of each class there are, by the names of the classes.
[[nodiscard]] NSDictionary* liveObjects();

// For what follows no class takes a message, so that it can be done before the program is loaded to its end.

/// Puts a function in the place of a class's method for its objects. Gives what was there.
void* replaceMethod(const char* owner, SEL selector, void* function);
/// Answers several messages, whose names are separated by blanks, to objects of a class with the same
/// function.
void addMethods(const char* owner, const char* names, void* function);
/// Does nothing when these messages come, whatever they bring, and answers them with nothing, zero or no.
void ignoreMessages(const char* owner, const char* names);
