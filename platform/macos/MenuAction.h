#pragma once

#import <Foundation/Foundation.h>

#include "platform/ports/StatusBar.h"

/// The target of the status menu's lines. There are no instances of it: the class itself is the target. What
/// a line does is the core's business, which knows it by the line's number in the sender's represented
/// object.
@interface MenuAction : NSObject
/// `clicks` must outlive the process's last click.
+ (void)setClicks:(kelpa::MenuClicks*)clicks;
/// The line whose click is being dealt with; nil at any other time.
+ (id)sender;
+ (void)didClickPause:(id)sender;
+ (void)didClickWater:(id)sender;
+ (void)didClickSettings:(id)sender;
+ (void)didClickUpdates:(id)sender;
+ (void)didClickFeedback:(id)sender;
+ (void)didClickAbout:(id)sender;
+ (void)didClickQuit:(id)sender;
@end
