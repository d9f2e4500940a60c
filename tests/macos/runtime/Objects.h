#pragma once

#import <Foundation/Foundation.h>

/// What is known of an object beyond its instance variables. It goes when the object goes.
[[nodiscard]] NSMutableDictionary* recordOf(id object);
/// How many objects of each class there are, by the names of the classes.
[[nodiscard]] NSDictionary* liveObjects();
/// Puts a function in the place of a class's method for its objects. Gives what was there. The class takes no
/// message, so that this can be done before the program is loaded to its end.
void* replaceMethod(const char* owner, SEL selector, void* function);
