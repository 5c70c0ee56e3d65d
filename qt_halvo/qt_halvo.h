// Includes every public header of qt_halvo.
#pragma once

#include <qt_halvo/qt_halvo_global.h>
#include <qt_halvo/qt_halvo_version.h>

#include <qt_halvo/animation/alpha_animation_controller.h>
#include <qt_halvo/animation/animated_effect.h>
#include <qt_halvo/animation/animated_pixmap_render.h>
#include <qt_halvo/animation/animation_label.h>
#include <qt_halvo/animation/card_animation_widget.h>
#include <qt_halvo/animation/card_widget.h>
#include <qt_halvo/animation/collapsing_pane.h>
#include <qt_halvo/animation/custom_stacked_widget.h>
#include <qt_halvo/animation/disappearing_widget.h>
#include <qt_halvo/animation/expand_animation.h>
#include <qt_halvo/animation/freeze_pixmap_wrapper.h>
#include <qt_halvo/animation/graphics_background_blur_effect.h>
#include <qt_halvo/animation/movie_widget.h>
#include <qt_halvo/animation/opacity_animation_controller.h>
#include <qt_halvo/animation/two_state_animator.h>
#include <qt_halvo/layouts/anchor_controller.h>
#include <qt_halvo/layouts/anchor_layout.h>
#include <qt_halvo/layouts/desktop_widget.h>
#include <qt_halvo/layouts/display_watcher.h>
#include <qt_halvo/layouts/flow_layout.h>
#include <qt_halvo/layouts/lightbox_controller.h>
#include <qt_halvo/layouts/overlay_conroller.h>
#include <qt_halvo/layouts/overlay_hover_controller.h>
#include <qt_halvo/layouts/overlay_simple_controller.h>
#include <qt_halvo/application/application.h>
#include <qt_halvo/application/inter_process_event.h>
#include <qt_halvo/application/run_async.h>
#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/styles/stylesheet_pseudo_states_helper.h>
#include <qt_halvo/utilities/hidpi_utils.h>
#include <qt_halvo/widgets/text/autoresized_text.h>
