#pragma once

#import <Foundation/Foundation.h>

/// What is known of an object beyond its instance variables. It goes when the object goes.
[[nodiscard]] NSMutableDictionary* recordOf(id object);

// For what follows no class takes a message, so that it can be done before the program is loaded to its end.
// The methods are those of a class's objects; of the class itself where a plus stands before its name.

/// Answers several messages, whose names are separated by blanks, with the same function.
void addMethods(const char* owner, const char* names, void* function);
/// Answers these messages, whatever they bring, with the object that they are sent to.
void answerWithReceiver(const char* owner, const char* names);
/// Does nothing when these messages come, whatever they bring, and answers them with nothing, zero or no.
void ignoreMessages(const char* owner, const char* names);
